#include "audition/Listener.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 100ms; // how often to check that the sound still plays
constexpr auto longestEnd = 100ms;

/// The latest requests. A counter goes up with each change, so that only the latest is handled.
struct Requests {
    bool on = false;
    bool looks = false;
    bool ends = false;
    Level level = Level::matched;
    std::string phrase;
    std::optional<Samples> ir;
    unsigned phraseCount = 0;
    unsigned renderCount = 0; ///< counts every change of phrase, level or IR
};

} // namespace

class Listener::Worker {
public:
    Worker(Load load, std::function<void()> changed)
        : load_(std::move(load)), changed_(std::move(changed)) {}

    template<typename Change>
    void request(const Change& change) {
        const std::lock_guard lock(mutex_);
        change(requests_);
        requestCount_++;
        wake_.notify_all();
    }

    Status status() const {
        const std::lock_guard lock(mutex_);
        return status_;
    }

    void run() {
        for (Requests requests = nextRequests(); !requests.ends; requests = nextRequests())
            handle(requests);
        player_.reset();
    }

    /// Stops calling `changed` and asks the thread to end.
    void end() {
        {
            const std::lock_guard lock(reportMutex_);
            changed_ = nullptr;
        }
        request([](Requests& requests) { requests.ends = true; });
    }

private:
    Requests nextRequests() {
        std::unique_lock lock(mutex_);
        const auto pending = [this] { return seenRequests_ != requestCount_; };
        playing_ ? void(wake_.wait_for(lock, lookInterval, pending)) : wake_.wait(lock, pending);
        seenRequests_ = requestCount_;
        Requests requests = requests_;
        requests_.looks = false;
        return requests;
    }

    void handle(const Requests& requests) {
        if (requests.looks && !playing_ && prepare())
            report({State::ready, {}, {}});
        if (playing_ && !requests.on)
            switchOff({State::ready, {}, {}});
        if (!playing_ && requests.on)
            switchOn();
        if (playing_)
            if (const std::string why = player_->whyStopped(); !why.empty())
                giveUp({State::ready, "Listening has stopped: " + why, {}});
        if (playing_ && renderCount_ != requests.renderCount)
            render(requests);
    }

    /// Loads the library and a player, and looks for a device.
    bool prepare() {
        std::string why;
        if (library_ == nullptr)
            library_ = load_(why);
        if (library_ != nullptr && !player_)
            player_ = library_->makePlayer();
        if (player_)
            why = player_->whyNoDevice();
        if (!why.empty())
            reportUnavailable(why);
        return why.empty();
    }

    void switchOn() {
        renderCount_ = 0;
        if (!prepare())
            return turnSwitchOff();
        if (const std::string why = player_->start(); !why.empty()) {
            turnSwitchOff();
            return reportUnavailable(why);
        }
        playing_ = true;
        report({State::playing, {}, {}});
    }

    // Reports first: a server that does not answer can delay the rest.
    void switchOff(Status status) {
        playing_ = false;
        report(std::move(status));
        player_->stop();
    }

    void giveUp(Status status) {
        turnSwitchOff();
        switchOff(std::move(status));
    }

    void turnSwitchOff() {
        const std::lock_guard lock(mutex_);
        requests_.on = false;
    }

    void reportUnavailable(const std::string& why) {
        report({State::unavailable, "Sound cannot be played: " + why, {}});
    }

    void render(const Requests& requests) {
        renderCount_ = requests.renderCount;
        if (!openPhrase(requests))
            return;
        std::shared_ptr<const Rendering> rendering;
        if (requests.ir)
            rendering = std::make_shared<Rendering>(phrase_->render(*requests.ir, requests.level));
        player_->play(rendering);
        std::string note;
        if (phrase_->isCut())
            note = "Only the first " + std::to_string(longestPhrase) +
                   " seconds of the phrase are played. ";
        if (rendering && rendering->heldByPeaks)
            note += "Its peaks keep it quieter than other IRs.";
        report({State::playing, {}, note});
    }

    bool openPhrase(const Requests& requests) {
        if (phrase_ && phraseCount_ == requests.phraseCount)
            return true;
        std::string why;
        phraseCount_ = requests.phraseCount;
        phrase_ = library_->openPhrase(requests.phrase, why);
        if (!phrase_)
            giveUp({State::ready, "The phrase " + requests.phrase + ": " + why, {}});
        return phrase_ != nullptr;
    }

    void report(Status status) {
        {
            const std::lock_guard lock(mutex_);
            status_ = std::move(status);
        }
        const std::lock_guard lock(reportMutex_);
        if (changed_)
            changed_();
    }

    const Load load_;
    std::mutex reportMutex_;
    std::function<void()> changed_;

    mutable std::mutex mutex_; ///< protects the next five
    std::condition_variable wake_;
    Requests requests_;
    unsigned requestCount_ = 0;
    unsigned seenRequests_ = 0;
    Status status_;

    // Used by the thread only.
    SoundLibrary* library_ = nullptr;
    std::unique_ptr<Player> player_;
    std::unique_ptr<Phrase> phrase_;
    unsigned phraseCount_ = 0;
    unsigned renderCount_ = 0;
    bool playing_ = false;
};

Listener::Listener(Load load, std::function<void()> changed)
    : worker_(std::make_shared<Worker>(std::move(load), std::move(changed))) {}

Listener::~Listener() {
    if (!thread_)
        return;
    worker_->end();
    thread_->endsWithin(longestEnd);
}

void Listener::run() {
    if (!thread_)
        thread_.emplace([worker = worker_] { worker->run(); });
}

void Listener::look() {
    run();
    worker_->request([](Requests& requests) { requests.looks = true; });
}

void Listener::listen(bool on) {
    if (on)
        run();
    worker_->request([on](Requests& requests) { requests.on = on; });
}

void Listener::setPhrase(const std::string& path) {
    worker_->request([&](Requests& requests) {
        requests.phrase = path;
        ++requests.phraseCount;
        ++requests.renderCount;
    });
}

void Listener::setLevel(Level level) {
    worker_->request([level](Requests& requests) {
        requests.level = level;
        ++requests.renderCount;
    });
}

void Listener::setIR(const std::optional<Samples>& ir) {
    worker_->request([&](Requests& requests) {
        requests.ir = ir;
        ++requests.renderCount;
    });
}

Listener::Status Listener::status() const {
    return worker_->status();
}

} // namespace cabslot
