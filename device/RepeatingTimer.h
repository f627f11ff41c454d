// A timer with fixed ticks: its start plus one interval, plus two intervals, and so on.
//
// It reads no clock; the caller passes in the time. Missed ticks are skipped, and a late tick does
// not delay later ones.
#pragma once

#include <chrono>

namespace cabslot {

class RepeatingTimer {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    RepeatingTimer(TimePoint start, std::chrono::milliseconds interval)
        : interval_(interval), due_(start + interval) {}

    /// The next tick.
    TimePoint due() const { return due_; }

    /// True if a tick is due; the next one is then the first after `now`.
    bool fire(TimePoint now) {
        if (now < due_)
            return false;
        const auto ticksPassed = (now - due_) / interval_ + 1;
        due_ += ticksPassed * interval_;
        return true;
    }

private:
    std::chrono::milliseconds interval_;
    TimePoint due_;
};

} // namespace cabslot
