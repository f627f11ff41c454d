// Converts an IR to minimum phase: the same magnitude at every frequency, the energy as early as
// possible.
#pragma once

#include "base/StopCheck.h"
#include "prepare/Steps.h"

namespace cabslot {

/// The longest signal that is converted; a transform of it takes some 40 MB and less than a second.
inline constexpr std::size_t longestForMinimumPhase = 1 << 15; // 0.74 s at 44.1 kHz

/// The result is as long as `signal` or `length`, whichever is longer, and its highest point has
/// the sign of the signal's. Empty if it was stopped. `signal` is at most longestForMinimumPhase.
///
/// Uses the real cepstrum of a transform of at least 2^18 points, long enough for the magnitude to
/// differ by less than 0.1 dB where it is within 60 dB of its maximum, narrow notches included. A
/// zero on the unit circle (a notch down to nothing, as a comb filter has) has no logarithm: within
/// a few Hz of it, the magnitude is some dB off at any length.
Signal minimumPhase(const Signal& signal, std::size_t length, const StopCheck& stop = {});

} // namespace cabslot
