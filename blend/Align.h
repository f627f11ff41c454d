// Finds by how much one IR starts later than another, and whether its polarity is opposite: the
// highest point, of either sign, of their cross-correlation.
//
// Each frequency is weighted by one over the root of both magnitudes, so that the resonance of the
// box, which is the loudest part of a guitar cabinet, does not hide where the sound begins. Any
// thread; takes some milliseconds.
#pragma once

#include "analysis/Samples.h"

namespace cabslot {

/// The largest shift that is looked for, in points: 11.6 ms, four metres of air.
inline constexpr std::size_t longestShift = 512;

/// Two IRs match if their weighted correlation reaches this. Unrelated noise that decays within 40
/// points stays below 0.45; an IR and its shifted copy are at 0.9 and more.
inline constexpr double leastLikeness = 0.5;

struct Alignment {
    bool isClear = false;    ///< the correlation has one clear peak; if not, the rest is as it is
    double shift = 0;        ///< points by which the second starts later than the first
    bool isOpposite = false; ///< of opposite polarity
    double likeness = 0;     ///< the height of the peak, 0 to 1
};

Alignment align(const Samples& first, const Samples& second);

} // namespace cabslot
