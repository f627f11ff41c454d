#include "blend/Compare.h"

#include "analysis/Response.h"
#include "analysis/Words.h"
#include "blend/Shift.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cabslot {

namespace {

/// What is left of `first` without `second`, at the best level, where both have points: what was
/// shifted out of the block, and what the filter of the shift spreads at its ends, does not count.
double residueOf(const Samples& first, const ShiftedIR& second) {
    const auto inner = second.points.size() == irPointCount ? 0 : 2 * std::ptrdiff_t{shiftReach};
    const std::ptrdiff_t from =
        std::max<std::ptrdiff_t>(0, second.first + (second.first < 0 ? inner : 0));
    const std::ptrdiff_t to =
        std::min<std::ptrdiff_t>(irPointCount, second.first + std::ssize(second.points) - inner);
    double both = 0;
    double one = 0;
    double other = 0;
    for (std::ptrdiff_t place = from; place < to; ++place) {
        const double a = first[static_cast<std::size_t>(place)];
        const double b = second.at(place);
        both += a * b;
        one += a * a;
        other += b * b;
    }
    const double gain = other > 0 ? both / other : 0;
    double left = 0; // summed, not calculated from the above: that would end at -150 dB
    for (std::ptrdiff_t place = from; place < to; ++place)
        left += std::pow(first[static_cast<std::size_t>(place)] - gain * second.at(place), 2);
    return one > 0 ? powerDecibels(left / one) : 0;
}

} // namespace

std::optional<Comparison> compare(const Samples& first, const Samples& second) {
    if (peakOf(first) == 0 || peakOf(second) == 0)
        return std::nullopt;
    Comparison result{.alignment = align(first, second)};
    result.level = powerDecibels(energyOf(second) / energyOf(first));
    const Response one(first);
    const Response other(second);
    for (std::size_t i = 0; i < octaves.size(); ++i) {
        const double low = octaves[i] / std::numbers::sqrt2;
        const double high = octaves[i] * std::numbers::sqrt2;
        result.differences[i] = other.mean(low, high) - one.mean(low, high);
    }
    result.residue = residueOf(first, shifted(second, -result.alignment.shift));
    return result;
}

std::string residueText(double residue) {
    if (residue <= quietest)
        return "they null completely";
    return std::string(residue <= nullResidue ? "they null, " : "they do not null, ") +
           fixedText(residue, 1) + " dB are left";
}

} // namespace cabslot
