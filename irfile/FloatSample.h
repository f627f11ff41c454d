// From a floating-point sample to an integer one, the same bits on every processor.
#pragma once

#include "irfile/SampleFormat.h"

#include <cmath>
#include <cstdint>

namespace cabslot {

/// Exactly 1.0 has no 24-bit sample and becomes 0.999999; -1.0 is treated alike.
inline float belowFullScale(float sample) {
    constexpr float almostOne = 0.999999f;
    return std::fabs(sample) == 1.0f ? std::copysign(almostOne, sample) : sample;
}

/// The integer sample of `sample`: scaled and truncated towards zero. A value that is not a number
/// or does not fit becomes the least 32-bit integer.
inline std::int32_t scaleToInteger(float sample) {
    constexpr float limit = 2147483648.0f; // 2^31
    const float scaled = fullScale * sample;
    return static_cast<std::int32_t>(std::fabs(scaled) < limit ? scaled : -limit);
}

} // namespace cabslot
