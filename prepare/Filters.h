// Low cut and high cut: Butterworth filters of second order, 12 dB per octave, -3 dB at the given
// frequency. They are minimum phase: nothing rings before the onset.
#pragma once

#include "prepare/Steps.h"

namespace cabslot {

/// Both lengthen `signal`, for the filter to ring in. `rate` in Hz, `hertz` below half of it.
void cutLows(Signal& signal, double rate, double hertz);
void cutHighs(Signal& signal, double rate, double hertz);

} // namespace cabslot
