// Shifts an IR by a fraction of a point: a windowed sinc of 32 points whose response deviates by
// less than 0.05 dB up to 18 kHz. A shift by whole points copies.
#pragma once

#include "analysis/Samples.h"

#include <cstddef>
#include <span>
#include <vector>

namespace cabslot {

/// How far the filter of a shift by a fraction spreads each point, to both sides.
inline constexpr std::size_t shiftReach = 16;

/// A shifted IR with all that has left its 1024 points.
struct ShiftedIR {
    std::vector<double> points;
    std::ptrdiff_t first; ///< the place of points[0]; before 0 if it has left the block

    double at(std::ptrdiff_t place) const; ///< 0 beyond the points
};

/// `samples` shifted by `points` (at most 4096 either way): later, or earlier if below 0.
ShiftedIR shifted(const Samples& samples, double points);

/// By how many whole points `ir` must be delayed so that its beginning lies within the block: what
/// comes before point 0 is then either more than `shiftReach` points before its onset (the first
/// point within 40 dB of the peak) or below -80 dB of its energy.
std::size_t delayToKeepOnset(const ShiftedIR& ir);

/// The share of its energy, 0 to 1, that lies outside the block if it is delayed by `delay` points.
double shareOutside(const ShiftedIR& ir, std::size_t delay);

} // namespace cabslot
