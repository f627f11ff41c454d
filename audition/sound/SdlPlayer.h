// The default output, through SDL 2: PulseAudio, PipeWire, ALSA, WASAPI or another system API.
#pragma once

#include "audition/sound/Mixer.h"

#include <SDL.h>

#include <chrono>

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
    std::string whyStopped() override;
    std::size_t played() const override { return mixer_ ? mixer_->played() : 0; }
    unsigned changes() const override { return mixer_ ? mixer_->changes() : 0; }

private:
    using Clock = std::chrono::steady_clock;

    void close();

    bool connected_ = false; ///< to a sound server, or to the system's own sound
    SDL_AudioDeviceID device_ = 0;
    std::unique_ptr<Mixer> mixer_; ///< one for each start()
    std::size_t seenPlayed_ = 0;
    Clock::time_point seenAt_;
};

} // namespace cabslot
