// How loud a sound is, and how loud it is made.
#pragma once

#include "audition/Sound.h"

#include <span>

namespace cabslot {

/// LUFS, integrated, by EBU R128; `quietest` when all is below its gate or shorter than 0.4 s.
double loudnessOf(std::span<const float> samples);

/// Brings `rendering`, whose samples are as the convolution gave them, to the level. Its peaks stay
/// below `highestPeak`, also where the loop's end and start sound together.
void setLevel(Rendering& rendering, Level level);

} // namespace cabslot
