// Decodes a WAV file's sample bytes into 24-bit points, with one function for each sample format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cabslot {

using SampleBytes = std::span<const std::uint8_t>;

/// Decodes the first channel of the first `points.size()` frames of `samples`, which begins with
/// the first frame and may end anywhere: missing bytes count as 0.
///
/// A point is 24-bit two's complement in the low bits. Only floats of 2.0 and more set higher bits.
using FrameDecoder = void (*)(SampleBytes samples, std::span<std::uint32_t> points);

/// The decoder for `channels` (1 or 2) channels; null if `bits` is not a supported depth.
FrameDecoder decoderFor(std::uint16_t bits, std::uint16_t channels);

/// The value of the sample of `bits` bits (a depth that decoderFor() supports) at the start of
/// `sample`: full scale 1.0, an 8-bit sample without its offset, a float unchanged.
float meantValue(SampleBytes sample, std::uint16_t bits);

} // namespace cabslot
