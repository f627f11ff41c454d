#include "base/OnAllCores.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace cabslot {

namespace {

constexpr std::size_t fewestThreads = 4; // part of the work is waiting for a disk
constexpr std::chrono::milliseconds interval{50};

} // namespace

void onAllCores(std::size_t count, const std::function<void(std::size_t)>& work,
                const std::function<bool(std::size_t done)>& meanwhile) {
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> done = 0;
    std::atomic<bool> goesOn = true;
    const auto workThrough = [&] {
        for (std::size_t i = next++; i < count && goesOn; i = next++) {
            work(i);
            ++done;
        }
    };
    std::vector<std::future<void>> workers;
    const std::size_t threads =
        std::max<std::size_t>(std::thread::hardware_concurrency(), fewestThreads);
    try {
        while (workers.size() < std::min(threads, count))
            workers.push_back(std::async(std::launch::async, workThrough));
    } catch (const std::system_error&) { // those that there are do it all
    }
    if (workers.empty()) {
        meanwhile(0);
        workThrough();
    }
    for (auto& worker : workers) {
        while (worker.wait_for(interval) != std::future_status::ready)
            goesOn = meanwhile(done) && goesOn;
        worker.get();
    }
}

} // namespace cabslot
