// The pedal's sample: 24-bit two's complement in the low bits of a 32-bit word.
#pragma once

#include <cstdint>

namespace cabslot {

inline constexpr std::uint32_t sampleMask = 0xFFFFFF; ///< the bits of a sample
inline constexpr std::uint32_t signBit = 0x800000;    ///< set in a negative sample
inline constexpr float fullScale = 8388608.0f;        ///< 1.0 as a sample
inline constexpr unsigned sampleBits = 24;

/// The sample as a signed number, -8388608 to 8388607; ignores the bits above it.
constexpr std::int32_t signedSample(std::uint32_t sample) {
    return static_cast<std::int32_t>((sample & sampleMask) ^ signBit) -
           static_cast<std::int32_t>(signBit);
}

} // namespace cabslot
