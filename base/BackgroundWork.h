// Work on a thread of its own that something outside may hold up for ever, such as a sound server.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <utility>

namespace cabslot {

/// Its owner waits for the end only as long as it wants to and then leaves the thread alone, so the
/// work must own everything that it uses. The constructor throws std::system_error if no thread
/// can be started.
class BackgroundWork {
public:
    explicit BackgroundWork(std::function<void()> work) {
        std::packaged_task<void()> task(std::move(work));
        end_ = task.get_future();
        std::thread(std::move(task)).detach();
    }

    /// Waits at most `time` for the work's end; whether it has ended.
    bool endsWithin(std::chrono::milliseconds time) const {
        return end_.wait_for(time) == std::future_status::ready;
    }

private:
    std::future<void> end_;
};

} // namespace cabslot
