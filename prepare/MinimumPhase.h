// The minimum-phase twin of an IR: the same magnitude at every frequency, the energy as early as it
// can be.
#pragma once

#include "prepare/Steps.h"

namespace cabslot {

/// As long as `signal` or `length`, whichever is longer. By the real cepstrum, of a transform that
/// is long enough for the magnitude to differ by less than 0.1 dB where it is above -60 dB of its
/// highest.
Signal minimumPhase(const Signal& signal, std::size_t length);

} // namespace cabslot
