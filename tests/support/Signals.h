// Blocks whose envelope and response are known.
#pragma once

#include "analysis/Response.h"

#include <cmath>
#include <functional>
#include <numbers>

namespace cabslot::testing {

/// The block of a signal given point by point, rounded to 24 bits.
inline Samples signal(const std::function<double(double point)>& value) {
    Block block{};
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = static_cast<std::uint32_t>(
                       std::min(std::lround(value(static_cast<double>(i)) * 8388608), 8388607L)) &
                   0xFFFFFF;
    return samplesOf(block);
}

inline Samples impulse(double at) {
    return signal([at](double point) { return point == at ? 1.0 : 0.0; });
}

inline Samples sine(double hertz, double amplitude) {
    return signal([=](double point) {
        return amplitude * std::sin(2 * std::numbers::pi * hertz * point / pointsPerSecond);
    });
}

} // namespace cabslot::testing
