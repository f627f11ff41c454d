#include "cli/SvgFile.h"

#include "analysis/Words.h"
#include "base/PathText.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace cabslot {

namespace {

const char* colourOf(Ink ink) {
    switch (ink) {
    case Ink::grid:
        return "#e6e6e6";
    case Ink::frame:
        return "#b8b8b8";
    case Ink::faint:
        return "#595959";
    case Ink::text:
        return "#121212";
    case Ink::before:
        return "#e09a3e";
    case Ink::other:
        return "#b3540a";
    case Ink::third:
        return "#4f7a1f";
    case Ink::signal:
        break;
    }
    return "#1a6ba8";
}

/// ` name="value"`
std::string attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + value + "\"";
}

std::string attribute(const std::string& name, double value) {
    return attribute(name, fixedText(value, 2));
}

/// Escapes XML's special characters and replaces control characters, which XML does not allow.
std::string escaped(const std::string& text) {
    std::string safe;
    for (const char letter : text) {
        if (letter == '&')
            safe += "&amp;";
        else if (letter == '<')
            safe += "&lt;";
        else
            safe += static_cast<unsigned char>(letter) < ' ' ? '?' : letter;
    }
    return safe;
}

std::string element(const Line& line) {
    return "<line" + attribute("x1", line.from.x) + attribute("y1", line.from.y) +
           attribute("x2", line.to.x) + attribute("y2", line.to.y) +
           attribute("stroke", colourOf(line.ink)) + "/>\n";
}

std::string points(const std::vector<Spot>& spots) {
    std::string all;
    for (const Spot& spot : spots)
        all += (all.empty() ? "" : " ") + fixedText(spot.x, 2) + "," + fixedText(spot.y, 2);
    return attribute("points", all);
}

std::string element(const Area& area) {
    return "<polygon" + points(area.corners) + attribute("fill", colourOf(area.ink)) +
           attribute("stroke", colourOf(area.ink)) + attribute("stroke-width", area.outline) +
           attribute("stroke-linejoin", "round") + "/>\n";
}

std::string element(const Stroke& stroke) {
    constexpr const char* dashes[] = {"none", "7 3", "1.5 3"};
    return "<polyline" + points(stroke.spots) + attribute("fill", "none") +
           attribute("stroke", colourOf(stroke.ink)) + attribute("stroke-width", stroke.width) +
           attribute("stroke-dasharray", dashes[static_cast<std::size_t>(stroke.style)]) + "/>\n";
}

std::string element(const Text& text) {
    constexpr const char* anchors[] = {"start", "middle", "end"};
    return "<text" + attribute("x", text.at.x) + attribute("y", text.at.y) +
           attribute("font-size", text.size) +
           attribute("text-anchor", anchors[static_cast<std::size_t>(text.align)]) +
           (text.strong ? attribute("font-weight", "bold") : "") +
           attribute("fill", colourOf(text.ink)) + ">" + escaped(text.text) + "</text>\n";
}

} // namespace

std::string whyNoSvgPath(const std::string& path) {
    std::string ending = textOf(pathOf(path).extension());
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return ending == ".svg" ? std::string() : path + ": a plot's name must end with .svg";
}

std::string svgFile(const Picture& picture) {
    const std::string width = fixedText(picture.width, 0);
    const std::string height = fixedText(picture.height, 0);
    std::string file = "<svg" + attribute("xmlns", "http://www.w3.org/2000/svg") +
                       attribute("width", width) + attribute("height", height) +
                       attribute("viewBox", "0 0 " + width + " " + height) +
                       attribute("font-family", "sans-serif") + ">\n" +
                       "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    for (const Shape& shape : picture.shapes)
        file += std::visit([](const auto& each) { return element(each); }, shape);
    return file + "</svg>\n";
}

} // namespace cabslot
