// The steps of preparing an IR. A signal is mono, full scale 1.0.
#pragma once

#include <cstddef>
#include <vector>

namespace cabslot {

using Signal = std::vector<double>;

/// Where the sound begins: the first sample within 40 dB of the peak; 0 if all are 0.
std::size_t onsetOf(const Signal& signal);

/// `signal` from `rate` to 44.1 kHz by libsoxr at its very high quality, with a minimum-phase
/// filter: one of linear phase would ring before the onset, and cutting that off would bend the
/// response. Empty when memory runs out.
Signal resampled(const Signal& signal, double rate);

/// Fades the last `length` samples out with half a period of a cosine, to 0 behind the last one.
void fadeOut(Signal& signal, std::size_t length);

double peakOf(const Signal& signal); ///< the greatest magnitude
void scale(Signal& signal, double factor);

} // namespace cabslot
