// Converts floating-point samples to integers, with identical bits on every processor.
#pragma once

#include "irfile/SampleFormat.h"

#include <cmath>
#include <cstdint>

namespace cabslot {

/// 1.0 does not fit into 24 bits and becomes 0.999999; -1.0 becomes -0.999999.
inline float belowFullScale(float sample) {
    constexpr float almostOne = 0.999999f;
    return std::fabs(sample) == 1.0f ? std::copysign(almostOne, sample) : sample;
}

/// Scales `sample` and truncates it towards zero. NaN and values that do not fit become the least
/// 32-bit integer.
inline std::int32_t scaleToInteger(float sample) {
    constexpr float limit = 2147483648.0f; // 2^31
    const float scaled = fullScale * sample;
    return static_cast<std::int32_t>(std::fabs(scaled) < limit ? scaled : -limit);
}

} // namespace cabslot
