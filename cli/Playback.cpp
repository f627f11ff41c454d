#include "cli/Playback.h"

#include <algorithm>
#include <atomic>
#include <chrono>
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
    Shared(std::unique_ptr<Player> with, std::shared_ptr<const Rendering> what)
        : player(std::move(with)), rendering(std::move(what)) {}

    std::unique_ptr<Player> player;
    std::shared_ptr<const Rendering> rendering;
    std::atomic<std::size_t> played = 0;
    std::atomic<bool> isOver = false; ///< set to end the sound
    std::string whyNot;               ///< to be read when the thread has ended

    void run() {
        whyNot = player->start();
        if (whyNot.empty()) {
            player->play(rendering);
            whyNot = follow();
            player->stop();
        }
        player.reset();
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
};

Playback::Playback(std::unique_ptr<Player> player, Rendering rendering)
    : shared_(std::make_shared<Shared>(std::move(player),
                                       std::make_shared<const Rendering>(std::move(rendering)))),
      thread_([shared = shared_] { shared->run(); }) {}

Playback::~Playback() {
    shared_->isOver = true;
    thread_.endsWithin(longestEnd);
}

bool Playback::wait() {
    return !thread_.endsWithin(pollInterval);
}

double Playback::seconds() const {
    const std::size_t played =
        std::min<std::size_t>(shared_->played, shared_->rendering->samples.size());
    return static_cast<double>(played) / soundRate;
}

std::string Playback::whyNot() const {
    return shared_->whyNot;
}

} // namespace cabslot
