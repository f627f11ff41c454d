#include "prepare/Loudness.h"

#include "analysis/Samples.h"

#include <ebur128.h>
#include <kissfft.hh>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <memory>

namespace cabslot {

namespace {

using Spectrum = std::vector<std::complex<double>>;

constexpr std::size_t noiseLength = 44100;
constexpr std::size_t transformSize = 1 << 16; // holds the noise and the longest IR
constexpr double noiseLevel = 0.1;             // RMS; -20 dBFS

/// White noise through a filter with three poles and zeros that falls by 3 dB per octave.
Signal pinkNoise() {
    Signal noise(noiseLength);
    std::uint32_t state = 1; // a linear congruential generator: the same noise everywhere
    std::array<double, 3> poles{};
    double energy = 0;
    for (double& sample : noise) {
        state = state * 1664525 + 1013904223;
        const double white = state / 2147483648.0 - 1;
        poles = {0.99765 * poles[0] + white * 0.0990460, 0.96300 * poles[1] + white * 0.2965164,
                 0.57000 * poles[2] + white * 1.0526913};
        sample = poles[0] + poles[1] + poles[2] + white * 0.1848;
        energy += sample * sample;
    }
    scale(noise, noiseLevel / std::sqrt(energy / noiseLength));
    return noise;
}

Spectrum spectrumOf(const Signal& signal) {
    Spectrum padded(transformSize);
    std::ranges::copy(signal, padded.begin());
    Spectrum result(transformSize);
    kissfft<double>(transformSize, false).transform(padded.data(), result.data());
    return result;
}

Signal throughNoise(const Signal& ir) {
    static const Spectrum noise = spectrumOf(pinkNoise());
    Spectrum product = spectrumOf(ir);
    for (std::size_t i = 0; i < transformSize; ++i)
        product[i] *= noise[i];
    Spectrum sound(transformSize);
    kissfft<double>(transformSize, true).transform(product.data(), sound.data());
    Signal result(noiseLength);
    for (std::size_t i = 0; i < noiseLength; ++i)
        result[i] = sound[i].real() / transformSize;
    return result;
}

struct EndMeasuring {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

} // namespace

double noiseLoudness(const Signal& ir) {
    const double peak = peakOf(ir);
    if (peak == 0)
        return quietest;
    Signal full = ir;
    scale(full, 1 / peak);
    const Signal sound = throughNoise(full);
    const std::unique_ptr<ebur128_state, EndMeasuring> state(
        ebur128_init(1, static_cast<unsigned long>(pointsPerSecond), EBUR128_MODE_I));
    double loudness = quietest;
    if (!state || ebur128_add_frames_double(state.get(), sound.data(), sound.size()) != 0 ||
        ebur128_loudness_global(state.get(), &loudness) != 0)
        return quietest;
    return std::max(loudness + decibels(peak), quietest);
}

} // namespace cabslot
