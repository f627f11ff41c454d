// Draws a waveform in a few lines of text.
#pragma once

#include "analysis/Samples.h"

#include <string>

namespace cabslot {

/// The waveform in lines of `columns` (at least 1) Braille patterns, two by four dots each, scaled
/// to the peak. Every line ends with a line feed.
std::string brailleWave(const Samples& samples, std::size_t columns);

/// How many columns a waveform on standard output should have: 0 unless standard output is a
/// terminal that can show Braille patterns.
std::size_t waveColumns();

} // namespace cabslot
