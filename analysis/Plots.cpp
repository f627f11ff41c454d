#include "analysis/Chart.h"
#include "analysis/Words.h"

#include <algorithm>
#include <cmath>

namespace cabslot {

namespace {

constexpr double quietestShape = 0.001; // -60 dBFS; lower peaks are drawn lower
constexpr double thumbnailColumns = 2;  // per unit: it is small, and screens have a high resolution
constexpr int waveStep = 5;             // ms

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

} // namespace cabslot
