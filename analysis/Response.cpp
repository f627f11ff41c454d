#include "analysis/Response.h"

#include <kissfft.hh>

#include <algorithm>
#include <cmath>
#include <complex>

namespace cabslot {

namespace {

constexpr std::size_t transformSize = 32768;
constexpr std::size_t binCount = transformSize / 2 + 1;
constexpr double binHz = pointsPerSecond / transformSize;

double powerOf(double decibels) {
    return std::pow(10, decibels / 10);
}

} // namespace

Response::Response(const Samples& samples) : decibels_(binCount) {
    constexpr std::size_t half = transformSize / 2;
    std::vector<double> padded(transformSize);
    std::copy(samples.begin(), samples.end(), padded.begin());
    // A real transform of twice the size: the first bin's imaginary part holds the last bin.
    std::vector<std::complex<double>> bins(half);
    kissfft<double>(half, false).transform_real(padded.data(), bins.data());
    decibels_.front() = decibels(std::abs(bins[0].real()));
    decibels_.back() = decibels(std::abs(bins[0].imag()));
    for (std::size_t i = 1; i < half; ++i)
        decibels_[i] = decibels(std::abs(bins[i]));
}

Range Response::over(double fromHz, double toHz) const {
    return rangeOver(decibels_, fromHz / binHz, toHz / binHz);
}

std::vector<Range> Response::columns(std::size_t columns) const {
    std::vector<Range> ranges;
    ranges.reserve(columns);
    const auto count = static_cast<double>(columns);
    for (std::size_t i = 0; i < columns; ++i) {
        const auto column = static_cast<double>(i);
        ranges.push_back(over(hertzAt(column / count), hertzAt((column + 1) / count)));
    }
    return ranges;
}

double Response::mean(double fromHz, double toHz) const {
    const auto last = static_cast<std::size_t>(std::min(toHz / binHz, binCount - 1.0));
    const auto first = std::min(static_cast<std::size_t>(std::ceil(fromHz / binHz)), last);
    double sum = 0;
    for (std::size_t i = first; i <= last; ++i)
        sum += powerOf(decibels_[i]);
    return powerDecibels(sum / static_cast<double>(last - first + 1));
}

Response::Peak Response::peak() const {
    const auto bin = [this](double hertz) {
        return decibels_.begin() + static_cast<std::ptrdiff_t>(hertz / binHz);
    };
    const auto highest = std::max_element(bin(lowestShownHz) + 1, bin(highestShownHz) + 1);
    return {static_cast<double>(highest - decibels_.begin()) * binHz, *highest};
}

double hertzAt(double place) {
    return lowestShownHz * std::pow(highestShownHz / lowestShownHz, place);
}

double placeOf(double hertz) {
    return std::log(hertz / lowestShownHz) / std::log(highestShownHz / lowestShownHz);
}

} // namespace cabslot
