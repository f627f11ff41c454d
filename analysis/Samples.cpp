#include "analysis/Samples.h"

#include "irfile/SampleFormat.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cabslot {

namespace {

constexpr double onsetLevel = 0.01; // of the peak; -40 dB

double valueAt(std::span<const double> curve, double position) {
    const auto index = std::min(static_cast<std::size_t>(position), curve.size() - 1);
    const auto next = std::min(index + 1, curve.size() - 1);
    return std::lerp(curve[index], curve[next], position - static_cast<double>(index));
}

} // namespace

Samples samplesOf(const Block& block) {
    Samples samples{};
    std::transform(block.begin(), block.end(), samples.begin(),
                   [](std::uint32_t entry) { return signedSample(entry) / double{fullScale}; });
    return samples;
}

Range rangeOver(std::span<const double> curve, double from, double to) {
    const auto end = static_cast<double>(curve.size() - 1);
    from = std::clamp(from, 0.0, end);
    to = std::clamp(to, from, end);
    const double left = valueAt(curve, from);
    const double right = valueAt(curve, to);
    Range range{std::min(left, right), std::max(left, right)};
    const auto last = static_cast<std::size_t>(to);
    for (auto i = static_cast<std::size_t>(std::ceil(from)); i <= last; ++i) {
        range.lowest = std::min(range.lowest, curve[i]);
        range.highest = std::max(range.highest, curve[i]);
    }
    return range;
}

std::vector<Range> envelope(const Samples& samples, std::size_t columns) {
    const double width = static_cast<double>(samples.size() - 1) / static_cast<double>(columns);
    std::vector<Range> ranges;
    ranges.reserve(columns);
    for (std::size_t i = 0; i < columns; ++i) {
        const auto column = static_cast<double>(i);
        ranges.push_back(rangeOver(samples, column * width, (column + 1) * width));
    }
    return ranges;
}

double decibels(double amplitude) {
    return amplitude > 0 ? std::max(20 * std::log10(amplitude), quietest) : quietest;
}

double powerDecibels(double power) {
    return decibels(std::sqrt(power));
}

double peakOf(std::span<const double> samples) {
    double peak = 0;
    for (const double sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

double energyOf(std::span<const double> samples) {
    return std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
}

std::size_t onsetOf(std::span<const double> samples) {
    const double threshold = onsetLevel * peakOf(samples);
    const auto first = std::ranges::find_if(samples, [threshold](double sample) {
        return sample != 0 && std::abs(sample) >= threshold;
    });
    return first == samples.end() ? 0 : static_cast<std::size_t>(first - samples.begin());
}

std::optional<double> peakDbfs(const Samples& samples) {
    const double peak = peakOf(samples);
    return peak > 0 ? std::optional(decibels(peak)) : std::nullopt;
}

std::optional<double> rmsDbfs(const Samples& samples) {
    const double sum = std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
    if (sum == 0)
        return std::nullopt;
    return decibels(std::sqrt(sum / static_cast<double>(samples.size())));
}

} // namespace cabslot
