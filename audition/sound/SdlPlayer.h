// The default output, through SDL 2: PulseAudio, PipeWire, ALSA, WASAPI or another system API.
#pragma once

#include "audition/sound/Mixer.h"
#include "audition/sound/StarvationMeter.h"

#include <SDL.h>

#include <atomic>
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

    static void pull(void* player, Uint8* bytes, int size);
    void close();
    bool openDevice();

    bool connected_ = false; ///< to a sound server, or to the system's own sound
    SDL_AudioDeviceID device_ = 0;
    std::unique_ptr<Mixer> mixer_; ///< one for each start()
    Uint16 samplesAtOnce_;         ///< larger once the output has run dry
    StarvationMeter meter_;        ///< the sound thread's, while there is a device
    std::atomic<bool> starved_ = false;
    bool isUrgent_ = false; ///< the sound thread has asked for its priority
    std::size_t seenPlayed_ = 0;
    Clock::time_point seenAt_;
};

} // namespace cabslot
