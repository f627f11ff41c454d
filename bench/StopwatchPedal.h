// A simulated pedal at one end of a socket, on its own thread, that records the times of events.
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

/// The times of one upload, as seen by the pedal.
struct UploadTimes {
    std::vector<Clock::time_point> frames; ///< when each frame's first report arrived
    Clock::time_point lastReport{};        ///< when the last report arrived
    Clock::time_point confirmed{};         ///< when the confirmation's last report was sent
};

/// Serves until the other end closes or this object is destroyed. Confirms at once.
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
