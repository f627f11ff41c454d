// A deadline as system calls take it.
#pragma once

#include "device/HIDManager.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ctime>

namespace cabslot {

/// From now until `deadline`; nothing when it has passed, a second at most. As fine as the clock: a
/// wait in whole milliseconds ends up to one late.
inline timespec timeUntil(HIDManager::TimePoint deadline) {
    using namespace std::chrono;
    const nanoseconds left = std::clamp<nanoseconds>(deadline - HIDManager::TimePoint::clock::now(),
                                                     nanoseconds(0), seconds(1));
    const auto whole = floor<seconds>(left);
    return {.tv_sec = whole.count(),
            .tv_nsec = static_cast<long>((left - whole).count())}; // long: 32 bits on Windows
}

/// Milliseconds from now until `deadline`, rounded up; 0 when it has passed, 1000 at most.
inline int millisecondsUntil(HIDManager::TimePoint deadline) {
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(deadline - HIDManager::TimePoint::clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1000));
}

} // namespace cabslot
