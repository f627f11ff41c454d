// Measures how loud an IR makes what is played through it.
#pragma once

#include "prepare/Steps.h"

namespace cabslot {

/// The loudness in LUFS, by EBU R128, of one second of fixed pink noise at -20 dBFS (RMS) played
/// through `ir`; `quietest` for a silent IR. The gate of EBU R128 is absolute, so it is measured
/// with the IR's peak at full scale: a quiet IR has a loudness too.
double noiseLoudness(const Signal& ir);

} // namespace cabslot
