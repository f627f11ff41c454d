// From a floating-point sample to an integer one, the same bits on every processor.
//
// Nothing here branches, so that the compiler can do several samples at once.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace cabslot {

inline constexpr float fullScale = 8388608.0f; ///< what 1.0 is, as a 24-bit sample

// Single precision, bit by bit.
inline constexpr std::uint32_t floatSign = 0x80000000;
inline constexpr std::uint32_t floatOne = 0x3F800000;
inline constexpr std::uint32_t floatAlmostOne = 0x3F7FFFEF; ///< 0.999999

/// Exactly 1.0 has no 24-bit sample and becomes 0.999999; -1.0 is treated alike.
inline float drawnIn(float sample) {
    const auto bits = std::bit_cast<std::uint32_t>(sample);
    const bool isOne = (bits & ~floatSign) == floatOne;
    return std::bit_cast<float>(bits - (isOne ? floatOne - floatAlmostOne : 0));
}

/// The integer sample of `sample`: scaled and truncated towards zero. A value that is not a number
/// or does not fit becomes the least 32-bit integer.
inline std::int32_t scaleToInteger(float sample) {
    constexpr float limit = 2147483648.0f;
    const float scaled = fullScale * sample;
    return static_cast<std::int32_t>(std::fabs(scaled) < limit ? scaled : -limit);
}

// Nearly always all samples of a file lie between -1.0 and 1.0, neither of them included, where
// none of the special cases above comes up. One look at all of them is cheaper than seeing to each.

/// The highest bit is set when the sample of these bits lies so. The marks of many can be ANDed.
constexpr std::uint32_t insideMark(std::uint32_t bits) {
    return (bits & ~floatSign) - floatOne;
}

/// The 24-bit sample of a sample that lies so.
inline std::uint32_t insidePoint(float sample) {
    constexpr std::uint32_t mask = 0xFFFFFF;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(fullScale * sample)) & mask;
}

} // namespace cabslot
