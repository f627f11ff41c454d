#include "analysis/Plots.h"

#include "analysis/Words.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace cabslot {

namespace {

constexpr double curveOutline = 1.2;
constexpr double quietestShape = 0.001; // -60 dBFS; lower peaks are drawn lower
constexpr double thumbnailColumns = 2;  // per unit: it is small, and screens have a high resolution
constexpr int waveStep = 5;             // ms
constexpr int responseSpan = 60;        // dB
constexpr int responseStep = 10;        // dB
constexpr double headroom = 3;          // dB, above the peak

// Space around the curve, in text sizes.
constexpr double roomLeft = 4.2;
constexpr double roomRight = 3.6;
constexpr double roomAbove = 2.4;
constexpr double roomBelow = 2.4;
constexpr double labelGap = 0.6;
constexpr double labelDrop = 1.6; // from the frame to the baseline of the labels below
constexpr double halfLetter = 0.36;
constexpr double unitGap = 1.3;

constexpr std::pair<double, const char*> frequencies[] = {
    {20, "20"},   {50, "50"},   {100, "100"}, {200, "200"},   {500, "500"},
    {1000, "1k"}, {2000, "2k"}, {5000, "5k"}, {10000, "10k"}, {20000, "20k"}};

/// Moves a thin line to whole pixels, where it looks sharp.
double crisp(double place) {
    return std::floor(place) + 0.5;
}

Line crispLine(Spot from, Spot to, Ink ink) {
    return {{crisp(from.x), crisp(from.y)}, {crisp(to.x), crisp(to.y)}, ink};
}

/// The rectangle that a curve is drawn in, and the scale of its vertical axis.
class Chart {
public:
    Chart(Picture& picture, const PlotSize& size, Range values)
        : picture_(picture), text_(size.text), values_(values), left_(crisp(roomLeft * size.text)),
          right_(crisp(size.width - roomRight * size.text)), top_(crisp(roomAbove * size.text)),
          bottom_(crisp(size.height - roomBelow * size.text)) {}

    double width() const { return right_ - left_; }
    double x(double place) const { return left_ + place * width(); }
    double y(double value) const {
        const double span = values_.highest - values_.lowest;
        return bottom_ - (value - values_.lowest) / span * (bottom_ - top_);
    }

    void caption(const std::string& text, const std::string& unit) {
        const double base = top_ - labelGap * 2 * text_;
        write({left_, base}, text, Align::left, Ink::text);
        write({left_ - labelGap * text_, base}, unit, Align::right, Ink::faint);
    }
    void across(double value, const std::string& label) {
        picture_.shapes.push_back(crispLine({left_, y(value)}, {right_, y(value)}, Ink::grid));
        write({left_ - labelGap * text_, y(value) + halfLetter * text_}, label, Align::right,
              Ink::faint);
    }
    void upright(double place, const std::string& label) {
        picture_.shapes.push_back(crispLine({x(place), top_}, {x(place), bottom_}, Ink::grid));
        write({x(place), bottom_ + labelDrop * text_}, label, Align::centre, Ink::faint);
    }
    void unitBelow(const std::string& unit) {
        write({right_ + unitGap * text_, bottom_ + labelDrop * text_}, unit, Align::left,
              Ink::faint);
    }
    void note(const std::string& text) {
        write({x(0.5), (top_ + bottom_) / 2 - labelGap * text_}, text, Align::centre, Ink::faint);
    }
    void frame() {
        const Spot corners[] = {{left_, top_}, {right_, top_}, {right_, bottom_}, {left_, bottom_}};
        for (std::size_t i = 0; i < std::size(corners); ++i)
            picture_.shapes.push_back(
                crispLine(corners[i], corners[(i + 1) % std::size(corners)], Ink::frame));
    }

private:
    void write(Spot at, const std::string& text, Align align, Ink ink) {
        if (!text.empty())
            picture_.shapes.emplace_back(Text{at, text, text_, align, ink});
    }

    Picture& picture_;
    double text_;
    Range values_;
    double left_, right_, top_, bottom_;
};

std::size_t columnsOf(double width) {
    return static_cast<std::size_t>(std::max(std::floor(width), 1.0));
}

/// The area between the lowest and the highest values of adjacent columns.
Area areaOf(std::span<const Range> ranges, const std::function<double(double)>& xOfColumn,
            const std::function<double(double)>& y, Ink ink = Ink::signal) {
    Area area{{}, curveOutline, ink};
    const std::size_t count = ranges.size();
    area.corners.reserve(2 * count);
    for (std::size_t i = 0; i < count; ++i)
        area.corners.push_back({xOfColumn(static_cast<double>(i)), y(ranges[i].highest)});
    for (std::size_t i = count; i > 0; --i)
        area.corners.push_back({xOfColumn(static_cast<double>(i - 1)), y(ranges[i - 1].lowest)});
    return area;
}

struct WaveAxis {
    double end;
    int decimals;
};

// The smallest axis that fits the peak is used, down to quietestShape.
constexpr WaveAxis waveAxes[] = {{0.001, 3}, {0.002, 3}, {0.005, 3}, {0.01, 2}, {0.02, 2},
                                 {0.05, 2},  {0.1, 1},   {0.2, 1},   {0.5, 1},  {1, 1}};

WaveAxis waveAxisFor(double peak) {
    const WaveAxis& whole = std::end(waveAxes)[-1];
    if (peak == 0)
        return whole;
    const auto* const fitting = std::find_if(std::begin(waveAxes), std::end(waveAxes),
                                             [peak](WaveAxis axis) { return peak <= axis.end; });
    return fitting == std::end(waveAxes) ? whole : *fitting;
}

/// Columns that lie wholly below `lowest` are left out, not drawn along the bottom.
void drawColumns(Picture& picture, const Chart& chart, std::span<const Range> ranges, double lowest,
                 Ink ink = Ink::signal) {
    const auto reaches = [lowest](const Range& range) { return range.highest >= lowest; };
    const auto count = static_cast<double>(ranges.size());
    auto from = std::find_if(ranges.begin(), ranges.end(), reaches);
    while (from != ranges.end()) {
        const auto to = std::find_if_not(from, ranges.end(), reaches);
        const auto first = static_cast<double>(from - ranges.begin());
        picture.shapes.emplace_back(areaOf(
            {from, to}, [&](double column) { return chart.x((first + column + 0.5) / count); },
            [&](double value) { return chart.y(std::max(value, lowest)); }, ink));
        from = std::find_if(to, ranges.end(), reaches);
    }
}

double responseTop(const Response& response) {
    return std::ceil((response.peak().decibels + headroom) / responseStep) * responseStep;
}

} // namespace

Picture thumbnail(const Samples& samples, double width, double height) {
    Picture picture{width, height, {}};
    const double middle = crisp(height / 2);
    const double scale = (height / 2 - 1.5) / std::max(peakOf(samples), quietestShape);
    picture.shapes.emplace_back(Line{{0, middle}, {width, middle}, Ink::frame});
    const std::vector<Range> ranges = envelope(samples, columnsOf(width * thumbnailColumns));
    picture.shapes.emplace_back(areaOf(
        ranges, [](double column) { return (column + 0.5) / thumbnailColumns; },
        [&](double value) { return middle - value * scale; }));
    return picture;
}

Picture wavePlot(const Samples& samples, const PlotSize& size) {
    Picture picture{size.width, size.height, {}};
    const WaveAxis axis = waveAxisFor(peakOf(samples));
    Chart chart(picture, size, {-axis.end, axis.end});
    chart.caption("Waveform (1.0 is full scale)", "");
    for (int time = 0; time < blockMilliseconds; time += waveStep)
        chart.upright(time / blockMilliseconds, std::to_string(time));
    chart.unitBelow("ms");
    for (const double half : {-axis.end / 2, axis.end / 2})
        chart.across(half, "");
    for (const double end : {-axis.end, axis.end})
        chart.across(end, fixedText(end, axis.decimals));
    chart.across(0, "0");
    chart.frame();
    // The axis covers 1024 points; the curve goes from the first to the last.
    const double covered = (irPointCount - 1.0) / irPointCount;
    const std::vector<Range> ranges = envelope(samples, columnsOf(chart.width() * covered));
    const auto count = static_cast<double>(ranges.size());
    picture.shapes.emplace_back(areaOf(
        ranges, [&](double column) { return chart.x((column + 0.5) / count * covered); },
        [&](double value) { return chart.y(value); }));
    return picture;
}

namespace {

void drawResponseAxes(Chart& chart, const std::string& caption, double top) {
    chart.caption(caption, "dB");
    for (const auto& [hertz, label] : frequencies)
        chart.upright(placeOf(hertz), label);
    chart.unitBelow("Hz");
    for (int below = 0; below <= responseSpan; below += responseStep)
        chart.across(top - below, fixedText(top - below, 0));
    chart.frame();
}

} // namespace

Picture responsePlot(const Samples& samples, const Response& response, const PlotSize& size) {
    Picture picture{size.width, size.height, {}};
    const bool silent = peakOf(samples) == 0;
    const double top = silent ? 0 : responseTop(response);
    Chart chart(picture, size, {top - responseSpan, top});
    drawResponseAxes(chart, "Frequency response", top);
    if (silent)
        chart.note("silent: there is nothing to show");
    else
        drawColumns(picture, chart, response.columns(columnsOf(chart.width())), top - responseSpan);
    return picture;
}

Picture comparisonPlot(const Samples& before, const Samples& after, const PlotSize& size) {
    Picture picture{size.width, size.height, {}};
    const Response was(before);
    const Response is(after);
    const bool silent = peakOf(before) == 0 && peakOf(after) == 0;
    const double top = silent ? 0 : std::max(responseTop(was), responseTop(is));
    Chart chart(picture, size, {top - responseSpan, top});
    drawResponseAxes(chart, "Frequency response, before (orange) and after (blue)", top);
    const std::size_t columns = columnsOf(chart.width());
    drawColumns(picture, chart, was.columns(columns), top - responseSpan, Ink::before);
    drawColumns(picture, chart, is.columns(columns), top - responseSpan);
    return picture;
}

} // namespace cabslot
