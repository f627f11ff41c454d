#include "prepare/Steps.h"

#include "analysis/Samples.h"
#include "irfile/IRConversion.h"

#include <soxr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace cabslot {

namespace {

constexpr double zerosBefore = 8;        // for the filter to rise in
constexpr std::size_t zerosAfter = 4096; // for the filter to ring in

} // namespace

void scale(Signal& signal, double factor) {
    for (double& sample : signal)
        sample *= factor;
}

Signal resampled(const Signal& signal, double rate) {
    Signal padded(static_cast<std::size_t>(zerosBefore * rate / pointsPerSecond));
    padded.insert(padded.end(), signal.begin(), signal.end());
    padded.resize(padded.size() + zerosAfter);
    const double length = std::ceil(static_cast<double>(padded.size()) * pointsPerSecond / rate);
    Signal result(static_cast<std::size_t>(length));
    const soxr_io_spec_t format = soxr_io_spec(SOXR_FLOAT64_I, SOXR_FLOAT64_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ | SOXR_MINIMUM_PHASE, 0);
    std::size_t made = 0;
    const soxr_error_t error =
        soxr_oneshot(rate, pointsPerSecond, 1, padded.data(), padded.size(), nullptr, result.data(),
                     result.size(), &made, &format, &quality, nullptr);
    result.resize(error == nullptr ? made : 0);
    return result;
}

Signal interpolated(const Signal& signal, std::int32_t rate) {
    std::array<float, irWorkCount> points{};
    const std::size_t count = std::min(signal.size(), points.size());
    std::transform(signal.begin(), signal.begin() + static_cast<std::ptrdiff_t>(count),
                   points.begin(), [](double sample) { return static_cast<float>(sample); });
    Resample(points, rate);
    return {ResampOut.begin(), ResampOut.end()};
}

Signal loudestPart(const Signal& signal, std::size_t length) {
    double energy = energyOf(std::span(signal).first(length));
    double most = energy;
    std::size_t begin = 0;
    for (std::size_t end = length; end < signal.size(); ++end) {
        const double leaving = signal[end - length];
        energy += signal[end] * signal[end] - leaving * leaving;
        if (energy > most * (1 + 1e-9)) {
            most = energy;
            begin = end - length + 1;
        }
    }
    const auto first = signal.begin() + static_cast<std::ptrdiff_t>(begin);
    return {first, first + static_cast<std::ptrdiff_t>(length)};
}

void fadeOut(Signal& signal, std::size_t length) {
    length = std::min(length, signal.size());
    for (std::size_t i = 0; i < length; ++i) {
        const double place = static_cast<double>(i + 1) / static_cast<double>(length + 1);
        signal[signal.size() - length + i] *= (1 + std::cos(std::numbers::pi * place)) / 2;
    }
}

} // namespace cabslot
