// The steps of preparing an IR. Signals are mono, full scale 1.0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cabslot {

using Signal = std::vector<double>;

/// Converts `signal` from `rate` to 44.1 kHz with libsoxr at very high quality and a minimum-phase
/// filter: a linear-phase one would ring before the onset, and cutting that off would change the
/// response. Empty if memory runs out.
Signal resampled(const Signal& signal, double rate);

/// The plain conversion's linear interpolation of at most the points that it reads, from `rate`,
/// which is supported and not 44.1 kHz, to 1024 points.
Signal interpolated(const Signal& signal, std::int32_t rate);

/// The `length` samples with the most energy, the earliest of several; `signal` has at least as
/// many.
Signal loudestPart(const Signal& signal, std::size_t length);

/// Fades out the last `length` samples with half a cosine period that reaches 0 after the last one.
void fadeOut(Signal& signal, std::size_t length);

void scale(Signal& signal, double factor);

} // namespace cabslot
