#include "prepare/MinimumPhase.h"

#include <kissfft.hh>

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>

namespace cabslot {

namespace {

using Spectrum = std::vector<std::complex<double>>;

constexpr std::size_t smallestTransform = 1 << 16;
constexpr std::size_t timesLonger = 16; // than the signal, so that the cepstrum hardly aliases
constexpr double quietestRatio = 1e-6;  // of the highest magnitude; 0 has no logarithm

Spectrum transformed(const Spectrum& values, bool inverse) {
    Spectrum result(values.size());
    kissfft<double>(values.size(), inverse).transform(values.data(), result.data());
    return result;
}

/// The logarithm of each magnitude.
Spectrum logMagnitudes(const Spectrum& spectrum) {
    double highest = 0;
    for (const auto& bin : spectrum)
        highest = std::max(highest, std::abs(bin));
    Spectrum logs(spectrum.size());
    std::ranges::transform(spectrum, logs.begin(), [highest](const std::complex<double>& bin) {
        return std::log(std::max(std::abs(bin), quietestRatio * highest));
    });
    return logs;
}

} // namespace

Signal minimumPhase(const Signal& signal, std::size_t length) {
    const std::size_t wanted = std::max(signal.size(), length);
    if (peakOf(signal) == 0)
        return Signal(wanted);
    const std::size_t size = std::max(smallestTransform, std::bit_ceil(timesLonger * wanted));
    const auto count = static_cast<double>(size);
    Spectrum padded(size);
    std::ranges::copy(signal, padded.begin());

    Spectrum cepstrum = transformed(logMagnitudes(transformed(padded, false)), true);
    // Folding the cepstrum onto its first half makes the phase minimum.
    for (std::size_t i = 0; i < size; ++i) {
        const double factor = i == 0 || i == size / 2 ? 1 : i < size / 2 ? 2 : 0;
        cepstrum[i] = cepstrum[i].real() * factor / count;
    }
    Spectrum spectrum = transformed(cepstrum, false);
    for (auto& bin : spectrum)
        bin = std::exp(bin);
    const Spectrum early = transformed(spectrum, true);

    Signal result(wanted);
    for (std::size_t i = 0; i < wanted; ++i)
        result[i] = early[i].real() / count;
    return result;
}

} // namespace cabslot
