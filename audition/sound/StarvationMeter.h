// Finds out whether a sound output ran dry, from when it asked for samples. One thread.
#pragma once

#include <algorithm>
#include <cstddef>

namespace cabslot {

/// While an output plays without gaps, what it has taken stays ahead of the clock by the same time,
/// its buffer. A gap lowers that for good; so once a second the longest lead is compared with that
/// of the second before. A drifting clock changes it far more slowly.
class StarvationMeter {
public:
    /// The output took `samples` more. `now` counts seconds from any start.
    void taken(std::size_t samples, double now, double rate) {
        seconds_ += static_cast<double>(samples) / rate;
        longest_ = std::max(longest_, seconds_ - now);
        if (windows_ == 0 || now >= windowEnd_) {
            starved_ = starved_ || (windows_ > 1 && longest_ < before_ - shortestGap);
            before_ = longest_;
            longest_ = seconds_ - now;
            windowEnd_ = now + 1;
            ++windows_;
        }
    }

    bool starved() const { return starved_; }

private:
    static constexpr double shortestGap = 0.005; // seconds

    double seconds_ = 0; ///< of sound, taken until now
    double longest_ = -1e30;
    double before_ = 0;
    double windowEnd_ = 0;
    unsigned windows_ = 0; ///< the first one is not compared: the buffer fills
    bool starved_ = false;
};

} // namespace cabslot
