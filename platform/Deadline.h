// Converts deadlines to the form that system calls take.
#pragma once

#include "device/HIDManager.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <ctime>

namespace cabslot {

/// The time from now until `deadline`; 0 if it has passed, one second at most. As precise as the
/// clock: a wait in whole milliseconds would end up to one late.
inline timespec timeUntil(HIDManager::TimePoint deadline) {
    using namespace std::chrono;
    const nanoseconds left = std::clamp<nanoseconds>(deadline - HIDManager::TimePoint::clock::now(),
                                                     nanoseconds(0), seconds(1));
    const auto whole = floor<seconds>(left);
    return {.tv_sec = whole.count(),
            .tv_nsec = static_cast<long>((left - whole).count())}; // long: 32 bits on Windows
}

/// Milliseconds from now until `deadline`, rounded up; 0 if it has passed, 1000 at most.
inline int millisecondsUntil(HIDManager::TimePoint deadline) {
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(deadline - HIDManager::TimePoint::clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1000));
}

} // namespace cabslot
