#include "analysis/Chart.h"

#include "irfile/Utf8.h"

#include <algorithm>
#include <cmath>

namespace cabslot {

namespace {

constexpr double curveOutline = 1.2;

// Space around the curve, in text sizes.
constexpr double roomLeft = 4.2;
constexpr double roomRight = 3.6;
constexpr double roomAbove = 2.4;
constexpr double roomBelow = 2.4;
constexpr double labelGap = 0.6;
constexpr double labelDrop = 1.6; // from the frame to the baseline of the labels below
constexpr double halfLetter = 0.36;
constexpr double unitGap = 1.3;
constexpr double letterWidth = 0.56; // of most letters, at least
constexpr double swatch = 2.4;       // a piece of the line before its name

Line crispLine(Spot from, Spot to, Ink ink) {
    return {{crisp(from.x), crisp(from.y)}, {crisp(to.x), crisp(to.y)}, ink};
}

/// At most `characters` of `text`, with an ellipsis if it is cut.
std::string cutTo(const std::string& text, std::size_t characters) {
    std::size_t end = 0;
    std::size_t beforeLast = 0;
    for (std::size_t count = 0; end < text.size(); ++count) {
        if (count + 1 == characters)
            beforeLast = end;
        if (count == characters)
            return text.substr(0, beforeLast) + "\xE2\x80\xA6";
        end += std::max<std::size_t>(firstCharacter(std::string_view(text).substr(end)).length, 1);
    }
    return text;
}

} // namespace

double crisp(double place) {
    return std::floor(place) + 0.5;
}

Chart::Chart(Picture& picture, const PlotSize& size, Range values)
    : picture_(picture), text_(size.text), values_(values), left_(crisp(roomLeft * size.text)),
      right_(crisp(size.width - roomRight * size.text)), top_(crisp(roomAbove * size.text)),
      bottom_(crisp(size.height - roomBelow * size.text)) {}

double Chart::y(double value) const {
    const double place = std::clamp(value, values_.lowest, values_.highest) - values_.lowest;
    return bottom_ - place / (values_.highest - values_.lowest) * (bottom_ - top_);
}

void Chart::caption(const std::string& text, const std::string& unit) {
    const double base = top_ - labelGap * 2 * text_;
    write({left_, base}, text, Align::left, Ink::text);
    write({left_ - labelGap * text_, base}, unit, Align::right, Ink::faint);
}

void Chart::across(double value, const std::string& label) {
    picture_.shapes.push_back(crispLine({left_, y(value)}, {right_, y(value)}, Ink::grid));
    write({left_ - labelGap * text_, y(value) + halfLetter * text_}, label, Align::right,
          Ink::faint);
}

void Chart::upright(double place, const std::string& label) {
    picture_.shapes.push_back(crispLine({x(place), top_}, {x(place), bottom_}, Ink::grid));
    write({x(place), bottom_ + labelDrop * text_}, label, Align::centre, Ink::faint);
}

void Chart::unitBelow(const std::string& unit) {
    write({right_ + unitGap * text_, bottom_ + labelDrop * text_}, unit, Align::left, Ink::faint);
}

void Chart::note(const std::string& text) {
    write({x(0.5), (top_ + bottom_) / 2 - labelGap * text_}, text, Align::centre, Ink::faint);
}

void Chart::frame() {
    const Spot corners[] = {{left_, top_}, {right_, top_}, {right_, bottom_}, {left_, bottom_}};
    for (std::size_t i = 0; i < std::size(corners); ++i)
        picture_.shapes.push_back(
            crispLine(corners[i], corners[(i + 1) % std::size(corners)], Ink::frame));
}

void Chart::legend(std::span<const Curve> curves, std::size_t after) {
    const double base = top_ - labelGap * 2 * text_;
    const double from = left_ + (static_cast<double>(after) * letterWidth + 1) * text_;
    const double each = (right_ - from) / static_cast<double>(curves.size());
    const double letters = std::max(0.0, each / text_ - swatch - 2 * labelGap) / letterWidth;
    double x = from;
    for (const Curve& curve : curves) {
        const double y = base - halfLetter * text_;
        picture_.shapes.emplace_back(
            Stroke{{{x, y}, {x + swatch * text_, y}}, strokeWidth, curve.style, curve.ink});
        const std::string name = cutTo(curve.name, static_cast<std::size_t>(letters));
        write({x + (swatch + labelGap) * text_, base}, name, Align::left, Ink::text);
        x += each;
    }
}

void Chart::write(Spot at, const std::string& text, Align align, Ink ink) {
    if (!text.empty())
        picture_.shapes.emplace_back(Text{at, text, text_, align, ink});
}

std::size_t columnsOf(double width) {
    return static_cast<std::size_t>(std::max(std::floor(width), 1.0));
}

Area areaOf(std::span<const Range> ranges, const std::function<double(double)>& xOfColumn,
            const std::function<double(double)>& y, Ink ink) {
    Area area{{}, curveOutline, ink};
    const std::size_t count = ranges.size();
    area.corners.reserve(2 * count);
    for (std::size_t i = 0; i < count; ++i)
        area.corners.push_back({xOfColumn(static_cast<double>(i)), y(ranges[i].highest)});
    for (std::size_t i = count; i > 0; --i)
        area.corners.push_back({xOfColumn(static_cast<double>(i - 1)), y(ranges[i - 1].lowest)});
    return area;
}

} // namespace cabslot
