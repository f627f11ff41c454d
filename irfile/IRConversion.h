// Converts decoded samples at the file's rate to 1024 points at 44.1 kHz.
//
// Integer samples are 24-bit two's complement in the low bits of an unsigned 32-bit entry, full
// scale 8388608 = 1.0. All arithmetic is single precision and gives the same bits everywhere.
//
// The routines work on the two buffers below. Each thread has its own, so that several files can be
// converted at once.
#pragma once

#include "base/Pedal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

inline constexpr std::size_t irWorkCount = 2240; ///< the most points that are decoded at any rate

// The resampler's input and output.
extern constinit thread_local std::array<float, irWorkCount> EnterBufferF;
extern constinit thread_local std::array<float, irPointCount> ResampOut;

/// A supported sample rate. All others are refused.
struct IRRate {
    std::int32_t sampleRate; ///< Hz
    std::uint32_t cap;       ///< the most points that are decoded
    float ratio;             ///< input points per output point; 0: not resampled
};

/// The row for `sampleRate`, or null.
const IRRate* findRate(std::int64_t sampleRate);

/// The number of points at `rate` that 1024 points at 44.1 kHz are made from; for a rate that is
/// resampled.
std::size_t pointsRead(const IRRate& rate);

/// The supported rates as text: "44100, 48000, 88200 and 96000 Hz".
std::string supportedRates();

/// Integer to float: fills EnterBufferF's first 1120, 2050 or 2240 points, for 48, 88.2 or 96 kHz,
/// and returns that count; for any other rate, writes nothing and returns 0.
std::uint32_t ICovertoF(std::span<const std::uint32_t, irWorkCount> source, std::int32_t rate);

/// Linear interpolation from `rate` (48000, 88200 or 96000 Hz) to 44.1 kHz, without a low-pass
/// filter. Fills ResampOut and returns its size.
std::uint32_t Resample(std::span<const float, irWorkCount> source, std::int32_t rate);

/// Float to integer. Values beyond 1.0 are not clipped but wrap within 24 bits. Also changes 1.0
/// and -1.0 in `source` to 0.999999 and -0.999999.
void FCovertoI(std::span<float, irPointCount> source,
               std::span<std::uint32_t, irPointCount> destination);

} // namespace cabslot
