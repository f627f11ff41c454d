#include "prepare/MinimumPhase.h"

#include "analysis/Samples.h"

#include <kissfft.hh>

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>

namespace cabslot {

namespace {

using Spectrum = std::vector<std::complex<double>>;

constexpr std::size_t smallestTransform = 1 << 18; // so that narrow notches keep their depth
constexpr std::size_t timesLonger = 16; // than the signal, so that the cepstrum hardly aliases
constexpr double quietestRatio = 1e-6;  // of the highest magnitude; 0 has no logarithm

void transform(Spectrum& values, bool inverse) {
    Spectrum result(values.size());
    kissfft<double>(values.size(), inverse).transform(values.data(), result.data());
    values.swap(result);
}

/// Replaces each bin by the logarithm of its magnitude.
void takeLogarithms(Spectrum& spectrum) {
    double highest = 0;
    for (const auto& bin : spectrum)
        highest = std::max(highest, std::abs(bin));
    for (auto& bin : spectrum)
        bin = std::log(std::max(std::abs(bin), quietestRatio * highest));
}

/// Folding the cepstrum onto its first half makes the phase minimum.
void fold(Spectrum& cepstrum) {
    const std::size_t size = cepstrum.size();
    for (std::size_t i = 0; i < size; ++i) {
        const double factor = i == 0 || i == size / 2 ? 1 : i < size / 2 ? 2 : 0;
        cepstrum[i] = cepstrum[i].real() * factor / static_cast<double>(size);
    }
}

/// -1 or 1: the sign of the highest point.
double polarityOf(const Signal& signal) {
    const auto highest =
        std::ranges::max_element(signal, {}, [](double sample) { return std::abs(sample); });
    return *highest < 0 ? -1 : 1;
}

} // namespace

Signal minimumPhase(const Signal& signal, std::size_t length, const StopCheck& stop) {
    const std::size_t wanted = std::max(signal.size(), length);
    if (peakOf(signal) == 0)
        return Signal(wanted);
    Spectrum values(std::max(smallestTransform, std::bit_ceil(timesLonger * wanted)));
    std::ranges::copy(signal, values.begin());
    transform(values, false);
    if (isStopped(stop))
        return {};
    takeLogarithms(values);
    transform(values, true);
    if (isStopped(stop))
        return {};
    fold(values);
    transform(values, false);
    if (isStopped(stop))
        return {};
    for (auto& bin : values)
        bin = std::exp(bin);
    transform(values, true);

    Signal result(wanted);
    for (std::size_t i = 0; i < wanted; ++i)
        result[i] = values[i].real() / static_cast<double>(values.size());
    scale(result, polarityOf(result) * polarityOf(signal));
    return result;
}

} // namespace cabslot
