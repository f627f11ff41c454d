// A deadline as system calls take it.
#pragma once

#include "device/HIDManager.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace cabslot {

/// Milliseconds from now until `deadline`, rounded up; 0 when it has passed, 1000 at most.
inline int millisecondsUntil(HIDManager::TimePoint deadline) {
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(deadline - HIDManager::TimePoint::clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1000));
}

} // namespace cabslot
