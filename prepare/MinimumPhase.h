// Converts an IR to minimum phase: the same magnitude at every frequency, the energy as early as
// possible.
#pragma once

#include "prepare/Steps.h"

namespace cabslot {

/// The result is as long as `signal` or `length`, whichever is longer. Uses the real cepstrum of a
/// transform long enough for the magnitude to differ by less than 0.1 dB where it is within 60 dB
/// of its maximum.
Signal minimumPhase(const Signal& signal, std::size_t length);

} // namespace cabslot
