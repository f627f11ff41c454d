// Measures how loud a sound is, and sets its level.
#pragma once

#include "audition/Sound.h"

#include <span>

namespace cabslot {

/// Integrated loudness in LUFS, by EBU R128; `quietest` if all is below its gate or under 0.4 s.
double loudnessOf(std::span<const float> samples);

/// Sets the level of `rendering`, which holds the unscaled convolution. The peaks stay below
/// `highestPeak`, even where the end and the start of the loop overlap.
void setLevel(Rendering& rendering, Level level);

} // namespace cabslot
