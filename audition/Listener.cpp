#include "audition/Listener.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 100ms; // at whether the sound is still there
constexpr auto longestEnd = 100ms;

/// What is wanted. Each part counts up when it changes, so that only the latest is seen to.
struct Wishes {
    bool on = false;
    bool looks = false;
    bool ends = false;
    Level level = Level::matched;
    std::string phrase;
    std::optional<Samples> ir;
    unsigned phraseCount = 0;
    unsigned renderCount = 0; ///< with every change of phrase, level or IR
};

} // namespace

class Listener::Worker {
public:
    Worker(Load load, std::function<void()> changed)
        : load_(std::move(load)), changed_(std::move(changed)) {}

    template<typename Change>
    void wish(const Change& change) {
        const std::lock_guard lock(mutex_);
        change(wishes_);
        wishCount_++;
        wake_.notify_all();
    }

    Status status() const {
        const std::lock_guard lock(mutex_);
        return status_;
    }

    void run() {
        for (Wishes wishes = nextWishes(); !wishes.ends; wishes = nextWishes())
            fulfil(wishes);
        player_.reset();
        const std::lock_guard lock(mutex_);
        hasEnded_ = true;
        wake_.notify_all();
    }

    /// From now on `changed` is not called.
    void end() {
        {
            const std::lock_guard lock(tellMutex_);
            changed_ = nullptr;
        }
        wish([](Wishes& wishes) { wishes.ends = true; });
        std::unique_lock lock(mutex_);
        wake_.wait_for(lock, longestEnd, [this] { return hasEnded_; });
    }

private:
    Wishes nextWishes() {
        std::unique_lock lock(mutex_);
        const auto isWished = [this] { return seenWishes_ != wishCount_; };
        playing_ ? void(wake_.wait_for(lock, lookInterval, isWished)) : wake_.wait(lock, isWished);
        seenWishes_ = wishCount_;
        Wishes wishes = wishes_;
        wishes_.looks = false;
        return wishes;
    }

    void fulfil(const Wishes& wishes) {
        if (wishes.looks && !playing_ && prepare())
            tell({State::ready, {}, {}});
        if (playing_ && !wishes.on)
            switchOff({State::ready, {}, {}});
        if (!playing_ && wishes.on)
            switchOn();
        if (playing_)
            if (const std::string why = player_->whyStopped(); !why.empty())
                giveUp({State::ready, "Listening has stopped: " + why, {}});
        if (playing_ && renderCount_ != wishes.renderCount)
            render(wishes);
    }

    /// Loads what is needed and looks for a device.
    bool prepare() {
        std::string why;
        if (library_ == nullptr)
            library_ = load_(why);
        if (library_ != nullptr && !player_)
            player_ = library_->makePlayer();
        if (player_)
            why = player_->whyNoDevice();
        if (!why.empty())
            tellUnavailable(why);
        return why.empty();
    }

    void switchOn() {
        renderCount_ = 0;
        if (!prepare())
            return turnSwitchOff();
        if (const std::string why = player_->start(); !why.empty()) {
            turnSwitchOff();
            return tellUnavailable(why);
        }
        playing_ = true;
        tell({State::playing, {}, {}});
    }

    // Told first: a server that does not answer can hold up the rest.
    void switchOff(Status status) {
        playing_ = false;
        tell(std::move(status));
        player_->stop();
    }

    void giveUp(Status status) {
        turnSwitchOff();
        switchOff(std::move(status));
    }

    void turnSwitchOff() {
        const std::lock_guard lock(mutex_);
        wishes_.on = false;
    }

    void tellUnavailable(const std::string& why) {
        tell({State::unavailable, "Sound cannot be played: " + why, {}});
    }

    void render(const Wishes& wishes) {
        renderCount_ = wishes.renderCount;
        if (!openPhrase(wishes))
            return;
        std::shared_ptr<const Rendering> rendering;
        if (wishes.ir)
            rendering = std::make_shared<Rendering>(phrase_->render(*wishes.ir, wishes.level));
        player_->play(rendering);
        std::string note;
        if (phrase_->isCut())
            note = "Of the phrase the first 30 seconds are played. ";
        if (rendering && rendering->heldByPeaks)
            note += "Its peaks keep it quieter than other IRs.";
        tell({State::playing, {}, note});
    }

    bool openPhrase(const Wishes& wishes) {
        if (phrase_ && phraseCount_ == wishes.phraseCount)
            return true;
        std::string why;
        phraseCount_ = wishes.phraseCount;
        phrase_ = library_->openPhrase(wishes.phrase, why);
        if (!phrase_)
            giveUp({State::ready, "The phrase " + wishes.phrase + ": " + why, {}});
        return phrase_ != nullptr;
    }

    void tell(Status status) {
        {
            const std::lock_guard lock(mutex_);
            status_ = std::move(status);
        }
        const std::lock_guard lock(tellMutex_);
        if (changed_)
            changed_();
    }

    const Load load_;
    std::mutex tellMutex_;
    std::function<void()> changed_;

    mutable std::mutex mutex_; ///< over the next six
    std::condition_variable wake_;
    Wishes wishes_;
    unsigned wishCount_ = 0;
    unsigned seenWishes_ = 0;
    bool hasEnded_ = false;
    Status status_;

    // The thread's own.
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
    if (isRunning_)
        worker_->end();
}

void Listener::run() {
    if (!std::exchange(isRunning_, true))
        std::thread([worker = worker_] { worker->run(); }).detach();
}

void Listener::look() {
    run();
    worker_->wish([](Wishes& wishes) { wishes.looks = true; });
}

void Listener::listen(bool on) {
    if (on)
        run();
    worker_->wish([on](Wishes& wishes) { wishes.on = on; });
}

void Listener::setPhrase(const std::string& path) {
    worker_->wish([&](Wishes& wishes) {
        wishes.phrase = path;
        ++wishes.phraseCount;
        ++wishes.renderCount;
    });
}

void Listener::setLevel(Level level) {
    worker_->wish([level](Wishes& wishes) {
        wishes.level = level;
        ++wishes.renderCount;
    });
}

void Listener::setIR(const std::optional<Samples>& ir) {
    worker_->wish([&](Wishes& wishes) {
        wishes.ir = ir;
        ++wishes.renderCount;
    });
}

Listener::Status Listener::status() const {
    return worker_->status();
}

} // namespace cabslot
