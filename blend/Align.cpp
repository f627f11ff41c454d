#include "blend/Align.h"

#include <kissfft.hh>

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

namespace cabslot {

namespace {

using Spectrum = std::vector<std::complex<double>>;

constexpr std::size_t transformSize = 4096; // holds both IRs at every shift
constexpr std::size_t stepsPerPoint = 16;   // of the correlation
constexpr std::size_t fineSize = transformSize * stepsPerPoint;
constexpr auto reach = static_cast<std::ptrdiff_t>(longestShift * stepsPerPoint);
constexpr double quietestPower = 0.01; // of the highest, added to all: noise is not raised
constexpr double closest = 0.005;      // points; a smaller shift is none
constexpr double mostOfRival = 0.9;    // of the peak: a second one that high makes it unclear

Spectrum spectrumOf(const Samples& samples) {
    Spectrum padded(transformSize);
    std::copy(samples.begin(), samples.end(), padded.begin());
    Spectrum result(transformSize);
    kissfft<double>(transformSize, false).transform(padded.data(), result.data());
    return result;
}

double highestPower(const Spectrum& spectrum) {
    double highest = 0;
    for (const auto& bin : spectrum)
        highest = std::max(highest, std::norm(bin));
    return highest;
}

/// The correlation at every 16th of a point, relative to that of equal IRs; a position below 0
/// counts from the end.
class Correlation {
public:
    Correlation(const Samples& first, const Samples& second) : values_(fineSize) {
        const Spectrum one = spectrumOf(first);
        const Spectrum other = spectrumOf(second);
        const double oneFloor = quietestPower * highestPower(one);
        const double otherFloor = quietestPower * highestPower(other);
        Spectrum cross(fineSize);
        double oneEnergy = 0;
        double otherEnergy = 0;
        for (std::size_t i = 1; i < transformSize / 2; ++i) {
            const double weight = std::pow(
                (std::norm(one[i]) + oneFloor) * (std::norm(other[i]) + otherFloor), -0.25);
            cross[i] = weight * other[i] * std::conj(one[i]);
            oneEnergy += weight * std::norm(one[i]);
            otherEnergy += weight * std::norm(other[i]);
        }
        kissfft<double>(fineSize, true).transform(cross.data(), values_.data());
        scale_ = 1 / std::sqrt(oneEnergy * otherEnergy);
    }

    double at(std::ptrdiff_t step) const {
        return values_[static_cast<std::size_t>(step + std::ptrdiff_t{fineSize}) % fineSize]
                   .real() *
               scale_;
    }

    /// The highest magnitude from step `from` to `to`, and its step.
    std::ptrdiff_t highest(std::ptrdiff_t from, std::ptrdiff_t to) const {
        std::ptrdiff_t best = from;
        for (std::ptrdiff_t step = from; step <= to; ++step) {
            if (std::abs(at(step)) > std::abs(at(best)))
                best = step;
        }
        return best;
    }

    /// The first step from `peak` in a direction where the sign differs from the peak's.
    std::ptrdiff_t endOfLobe(std::ptrdiff_t peak, std::ptrdiff_t direction) const {
        std::ptrdiff_t step = peak;
        while (std::abs(step) < reach && at(step) * at(peak) > 0)
            step += direction;
        return step;
    }

    /// The peak's place between steps, by a parabola through it and its neighbours.
    double vertex(std::ptrdiff_t peak) const {
        const double before = at(peak - 1);
        const double after = at(peak + 1);
        return static_cast<double>(peak) + (before - after) / 2 / (before - 2 * at(peak) + after);
    }

private:
    Spectrum values_;
    double scale_ = 0;
};

} // namespace

Alignment align(const Samples& first, const Samples& second) {
    if (peakOf(first) == 0 || peakOf(second) == 0)
        return {};
    const Correlation correlation(first, second);
    const std::ptrdiff_t peak = correlation.highest(-reach, reach);
    const double height = correlation.at(peak);
    const std::ptrdiff_t before = correlation.highest(-reach, correlation.endOfLobe(peak, -1));
    const std::ptrdiff_t after = correlation.highest(correlation.endOfLobe(peak, 1), reach);
    const double rival =
        std::max(std::abs(correlation.at(before)), std::abs(correlation.at(after)));
    Alignment found{.likeness = std::abs(height)};
    found.isClear = found.likeness >= leastLikeness && rival <= mostOfRival * found.likeness;
    if (!found.isClear)
        return found;
    found.isOpposite = height < 0;
    found.shift = correlation.vertex(peak) / stepsPerPoint;
    if (std::abs(found.shift) < closest)
        found.shift = 0;
    return found;
}

} // namespace cabslot
