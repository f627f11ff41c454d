// A sound library whose device the test controls. Its phrases keep only the first point of an IR,
// the phrase "double" twice of it.
#pragma once

#include "audition/Sound.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

namespace cabslot::testing {

/// The device's behaviour, set by the test, and what it was given.
struct Device {
    std::mutex mutex;
    std::string whyNone;
    std::string whyLost;
    std::vector<double> heard; ///< the first point of each IR; 0: silence
    int stops = 0;
    std::atomic<bool> hangs = false;

    template<typename Use>
    auto use(const Use& with) {
        const std::lock_guard lock(mutex);
        return with();
    }
};

class FakePlayer final : public Player {
public:
    explicit FakePlayer(std::shared_ptr<Device> device) : device_(std::move(device)) {}

    std::string whyNoDevice() override {
        while (device_->hangs)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return device_->use([&] { return device_->whyNone; });
    }
    std::string start() override { return {}; }
    void play(std::shared_ptr<const Rendering> next) override {
        device_->use([&] { device_->heard.push_back(next ? next->gain : 0); });
    }
    void stop() override {
        device_->use([&] { ++device_->stops; });
    }
    std::string whyStopped() override {
        return device_->use([&] { return device_->whyLost; });
    }
    std::size_t played() const override { return 0; }
    unsigned changes() const override { return 0; }

private:
    std::shared_ptr<Device> device_;
};

class FakePhrase final : public Phrase {
public:
    explicit FakePhrase(double scale) : scale_(scale) {}
    std::size_t size() const override { return 1; }
    bool isCut() const override { return false; }
    Rendering render(const Samples& ir, Level level) const override {
        Rendering rendering;
        rendering.gain = scale_ * (level == Level::matched ? ir[0] : -ir[0]);
        return rendering;
    }

private:
    double scale_;
};

class FakeLibrary final : public SoundLibrary {
public:
    std::unique_ptr<Phrase> openPhrase(const std::string& path, std::string& why) const override {
        if (path != "bad")
            return std::make_unique<FakePhrase>(path == "double" ? 2 : 1);
        why = "it is bad";
        return nullptr;
    }
    std::unique_ptr<Player> makePlayer() const override {
        return std::make_unique<FakePlayer>(device);
    }

    std::shared_ptr<Device> device = std::make_shared<Device>();
};

} // namespace cabslot::testing
