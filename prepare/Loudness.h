// Measures how loud an IR makes what is played through it.
#pragma once

#include "prepare/Steps.h"

namespace cabslot {

/// The loudness in LUFS, by EBU R128, of one second of fixed pink noise at -20 dBFS (RMS) played
/// through `ir`. NaN for a silent IR.
double noiseLoudness(const Signal& ir);

} // namespace cabslot
