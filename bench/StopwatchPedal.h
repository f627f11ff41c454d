// A simulated pedal at one end of a socket, on a thread of its own, that notes when what happened.
#pragma once

#include "base/FileDescriptor.h"
#include "simulator/pedal/PedalStore.h"

#include <chrono>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

namespace cabslot::bench {

using Clock = std::chrono::steady_clock;

inline constexpr std::size_t uploadFrames = 7;

/// One upload as the pedal saw it.
struct UploadTimes {
    std::vector<Clock::time_point> frames; ///< when each frame's first report came
    Clock::time_point lastReport{};        ///< when the last report came
    Clock::time_point confirmed{};         ///< when the last report of the confirmation had left
};

/// Serves until the other end closes or it is destroyed. Confirms at once.
class StopwatchPedal {
public:
    explicit StopwatchPedal(FileDescriptor socket);
    ~StopwatchPedal();

    /// The uploads that were confirmed since the last call; any thread.
    std::vector<UploadTimes> takeUploads();

private:
    void serve();
    void note(const std::uint8_t* report, Clock::time_point now);

    FileDescriptor socket_;
    simulator::PedalStore store_;
    UploadTimes upload_;
    std::mutex mutex_;
    std::vector<UploadTimes> uploads_;
    std::thread thread_;
};

} // namespace cabslot::bench
