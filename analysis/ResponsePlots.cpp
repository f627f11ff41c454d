// The plots of frequency responses: dB over Hz.
#include "analysis/Chart.h"
#include "analysis/Words.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cabslot {

namespace {

constexpr int responseSpan = 60; // dB
constexpr int responseStep = 10; // dB
constexpr double headroom = 3;   // dB, above the peak

constexpr std::pair<double, const char*> frequencies[] = {
    {20, "20"},   {50, "50"},   {100, "100"}, {200, "200"},   {500, "500"},
    {1000, "1k"}, {2000, "2k"}, {5000, "5k"}, {10000, "10k"}, {20000, "20k"}};

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

void drawResponseAxes(Chart& chart, const std::string& caption, double top) {
    chart.caption(caption, "dB");
    for (const auto& [hertz, label] : frequencies)
        chart.upright(placeOf(hertz), label);
    chart.unitBelow("Hz");
    for (int below = 0; below <= responseSpan; below += responseStep)
        chart.across(top - below, fixedText(top - below, 0));
    chart.frame();
}

/// As a thin line through the middle of each column; interrupted where it lies below `lowest`.
void drawStroke(Picture& picture, const Chart& chart, const Curve& curve, double lowest) {
    const std::vector<Range> ranges = curve.response->columns(columnsOf(chart.width()));
    const auto count = static_cast<double>(ranges.size());
    Stroke stroke{{}, strokeWidth, curve.style, curve.ink};
    const auto end = [&] {
        if (stroke.spots.size() > 1)
            picture.shapes.emplace_back(stroke);
        stroke.spots.clear();
    };
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        const double value = (ranges[i].lowest + ranges[i].highest) / 2;
        if (value < lowest)
            end();
        else
            stroke.spots.push_back(
                {chart.x((static_cast<double>(i) + 0.5) / count), chart.y(value)});
    }
    end();
}

void drawCurve(Picture& picture, const Chart& chart, const Curve& curve, double lowest) {
    if (curve.style != LineStyle::solid)
        return drawStroke(picture, chart, curve, lowest);
    drawColumns(picture, chart, curve.response->columns(columnsOf(chart.width())), lowest,
                curve.ink);
}

double topOf(std::span<const Curve> curves) {
    double top = quietest;
    for (const Curve& curve : curves)
        top = std::max(top, responseTop(*curve.response));
    return top > quietest + responseSpan ? top : 0;
}

} // namespace

Picture responsesPlot(const std::string& caption, std::span<const Curve> curves,
                      const PlotSize& size) {
    Picture picture{size.width, size.height, {}};
    const double highest = topOf(curves);
    Chart chart(picture, size, {highest - responseSpan, highest});
    drawResponseAxes(chart, caption, highest);
    for (const Curve& curve : curves)
        drawCurve(picture, chart, curve, highest - responseSpan);
    if (curves.size() > 1)
        chart.legend(curves, caption.size());
    return picture;
}

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
