// From a WAV file's sample bytes to 24-bit points, one function for each kind of file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cabslot {

using SampleBytes = std::span<const std::uint8_t>;

/// Decodes the first channel of the first `points.size()` frames of `samples`, which begins with
/// the first frame and may end anywhere: sample bytes that are not there count as 0.
///
/// A point is 24-bit two's complement in the low bits. Only a float of 2.0 and more has higher
/// bits.
using FrameDecoder = void (*)(SampleBytes samples, std::span<std::uint32_t> points);

/// For frames of one or two channels (`channels`); null when no sample has so many bits.
FrameDecoder decoderFor(std::uint16_t bits, std::uint16_t channels);

/// What a file means by the sample of `bits` bits (a depth that decoderFor() knows) at the start of
/// `sample`: full scale 1.0, an 8-bit sample without its offset, a float as it is.
float meantValue(SampleBytes sample, std::uint16_t bits);

} // namespace cabslot
