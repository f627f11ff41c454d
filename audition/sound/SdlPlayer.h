// The default output, through SDL 2: PulseAudio, PipeWire, ALSA, WASAPI or another system API.
#pragma once

#include "audition/sound/Mixer.h"
#include "audition/sound/StarvationMeter.h"

#include <SDL.h>

#include <atomic>
#include <chrono>
#include <mutex>

namespace cabslot {

class SdlPlayer final : public Player {
public:
    SdlPlayer();
    SdlPlayer(const SdlPlayer&) = delete;
    SdlPlayer& operator=(const SdlPlayer&) = delete;
    ~SdlPlayer() override;

    std::string whyNoDevice() override;
    std::string start() override;
    void play(std::shared_ptr<const Rendering> next) override;
    void stop() override;

    /// Also gives an output that has run dry a larger buffer.
    std::string whyStopped() override;

    std::size_t played() const override { return mixer_ ? mixer_->played() : 0; }
    unsigned changes() const override { return mixer_ ? mixer_->changes() : 0; }

private:
    using Clock = std::chrono::steady_clock;

    /// An open output and what its thread needs. The output that has begun last pulls from the
    /// mixer; another one is silent.
    struct Output {
        explicit Output(SdlPlayer& owner) : player(owner) {}
        Output(const Output&) = delete;
        Output& operator=(const Output&) = delete;
        ~Output();

        bool open(Uint16 samplesAtOnce);
        void pull(std::span<float> samples);

        SdlPlayer& player;
        SDL_AudioDeviceID device = 0;
        StarvationMeter meter; ///< used by the sound thread only, as is the next
        bool hasBegun = false;
        std::atomic<bool> starved = false;
    };

    void close();
    void enlargeBuffer();

    bool connected_ = false;       ///< to a sound server, or to the system's own sound
    std::unique_ptr<Mixer> mixer_; ///< one for each start()
    std::mutex pulling_;           ///< protects mixer_->pull() while one output replaces another
    std::atomic<Output*> current_ = nullptr; ///< the output that pulls
    std::unique_ptr<Output> output_;
    Uint16 samplesAtOnce_; ///< larger once an output has run dry
    std::size_t seenPlayed_ = 0;
    Clock::time_point seenAt_;
};

} // namespace cabslot
