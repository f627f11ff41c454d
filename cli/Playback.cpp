#include "cli/Playback.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 10ms;
constexpr auto longestEnd = 70ms;     // so that Ctrl-C takes effect within a tenth of a second
constexpr double bufferedTail = 0.25; // seconds held in the device's buffers

} // namespace

struct Playback::Shared {
    std::unique_ptr<Player> player;
    std::shared_ptr<const Rendering> rendering;
    std::atomic<std::size_t> played = 0;
    std::atomic<bool> isOver = false; ///< set to end the sound

    std::mutex mutex; ///< protects the rest
    std::condition_variable changed;
    bool hasEnded = false;
    std::string whyNot;

    void run() {
        std::string why = player->start();
        if (why.empty()) {
            player->play(rendering);
            why = follow();
            player->stop();
        }
        player.reset();
        const std::lock_guard lock(mutex);
        hasEnded = true;
        whyNot = std::move(why);
        changed.notify_all();
    }

    std::string follow() {
        const std::size_t end =
            rendering->samples.size() + static_cast<std::size_t>(bufferedTail * soundRate);
        std::string why;
        while (!isOver && played < end && why.empty()) {
            std::this_thread::sleep_for(pollInterval);
            played = player->played();
            why = player->whyStopped();
        }
        return why;
    }

    bool waitForEnd(std::chrono::milliseconds time) {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, time, [this] { return hasEnded; });
    }
};

Playback::Playback(std::unique_ptr<Player> player, Rendering rendering)
    : shared_(std::make_shared<Shared>()) {
    shared_->player = std::move(player);
    shared_->rendering = std::make_shared<const Rendering>(std::move(rendering));
    std::thread([shared = shared_] { shared->run(); }).detach();
}

Playback::~Playback() {
    shared_->isOver = true;
    shared_->waitForEnd(longestEnd);
}

bool Playback::wait() {
    return !shared_->waitForEnd(pollInterval);
}

double Playback::seconds() const {
    const std::size_t played =
        std::min<std::size_t>(shared_->played, shared_->rendering->samples.size());
    return static_cast<double>(played) / soundRate;
}

std::string Playback::whyNot() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->whyNot;
}

} // namespace cabslot
