// The page that is written to an SVG file.
#include "analysis/Plots.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr double textSize = 12;
constexpr double nameSize = 20;
constexpr double pageWidth = 800;
constexpr double margin = 24;
constexpr double lineHeight = 18;
constexpr double waveHeight = 230;
constexpr double responseHeight = 300;
constexpr std::size_t lineLength = 104; // characters that always fit the width

/// Wraps `text` at blanks into lines of at most lineLength characters, unless a word is longer.
std::vector<std::string> wrapped(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (text.size() - start > lineLength) {
        const std::size_t blank = text.rfind(' ', start + lineLength);
        if (blank == std::string::npos || blank <= start)
            break;
        lines.push_back(text.substr(start, blank - start));
        start = blank + 1;
    }
    lines.push_back(text.substr(start));
    return lines;
}

/// Lays out lines and plots from top to bottom.
class Page {
public:
    Picture picture{pageWidth, margin, {}};

    void line(const std::string& text, double size, Ink ink, bool strong = false) {
        picture.height += std::max(lineHeight, size);
        picture.shapes.emplace_back(
            Text{{margin, picture.height}, text, size, Align::left, ink, strong});
    }
    void gap(double height) { picture.height += height; }
    void place(const Picture& part) {
        for (Shape shape : part.shapes) {
            std::visit([this](auto& each) { moveDown(each); }, shape);
            picture.shapes.push_back(std::move(shape));
        }
        picture.height += part.height;
    }

private:
    void moveDown(Line& line) const {
        line.from.y += picture.height;
        line.to.y += picture.height;
    }
    void moveDown(Area& area) const {
        for (Spot& corner : area.corners)
            corner.y += picture.height;
    }
    void moveDown(Stroke& stroke) const {
        for (Spot& spot : stroke.spots)
            spot.y += picture.height;
    }
    void moveDown(Text& text) const { text.at.y += picture.height; }
};

} // namespace

Picture summaryPage(const IRSummary& summary) {
    Page page;
    page.line(summary.name, nameSize, Ink::text, true);
    page.gap(lineHeight / 4);
    page.line(summary.origin + "; " + levelsText(summary.samples), textSize, Ink::faint);
    page.gap(lineHeight);
    page.place(wavePlot(summary.samples, {pageWidth, waveHeight, textSize}));
    page.gap(lineHeight);
    page.place(responsePlot(summary.samples, Response(summary.samples),
                            {pageWidth, responseHeight, textSize}));
    page.gap(lineHeight / 2);
    if (summary.findings.empty())
        page.line("Nothing odd was found.", textSize, Ink::text);
    for (const Finding& finding : summary.findings) {
        for (const std::string& line : wrapped(finding.text))
            page.line(line, textSize, Ink::text);
        page.gap(lineHeight / 3);
    }
    page.gap(margin);
    return page.picture;
}

Picture comparisonPage(const std::string& name, const std::vector<std::string>& steps,
                       const Samples& before, const Samples& after) {
    Page page;
    page.line(name, nameSize, Ink::text, true);
    page.gap(lineHeight / 4);
    page.line("Before: " + levelsText(before) + "; after: " + levelsText(after), textSize,
              Ink::faint);
    page.gap(lineHeight);
    page.place(wavePlot(after, {pageWidth, waveHeight, textSize}));
    page.gap(lineHeight);
    page.place(comparisonPlot(before, after, {pageWidth, responseHeight, textSize}));
    page.gap(lineHeight / 2);
    for (const std::string& step : steps)
        page.line(step, textSize, Ink::text);
    page.gap(margin);
    return page.picture;
}

Picture responsesPage(const std::string& title, const std::vector<std::string>& lines,
                      const Samples* wave, std::span<const Curve> curves) {
    Page page;
    page.line(title, nameSize, Ink::text, true);
    page.gap(lineHeight / 4);
    if (wave != nullptr) {
        page.line(levelsText(*wave), textSize, Ink::faint);
        page.gap(lineHeight);
        page.place(wavePlot(*wave, {pageWidth, waveHeight, textSize}));
    }
    page.gap(lineHeight);
    page.place(responsesPlot("Frequency response", curves, {pageWidth, responseHeight, textSize}));
    page.gap(lineHeight / 2);
    for (const std::string& text : lines) {
        for (const std::string& line : wrapped(text))
            page.line(line, textSize, Ink::text);
    }
    page.gap(margin);
    return page.picture;
}

} // namespace cabslot
