// How loud an IR makes what is played through it.
#pragma once

#include "prepare/Steps.h"

namespace cabslot {

/// LUFS by EBU R128 of a second of pink noise at -20 dBFS (RMS), always the same, played through
/// `ir`. Not a number for a silent one.
double loudnessOf(const Signal& ir);

} // namespace cabslot
