#include "audition/sound/SdlPlayer.h"

#include "audition/sound/AlsaMessages.h"

#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr Uint16 usualBuffer = 1024;  // samples, 23 ms: smaller buffers run dry on a busy machine
constexpr Uint16 largerBuffer = 4096; // 93 ms, where even the usual one has run dry
constexpr auto longestFadeOut = 80ms; // a server that hangs must not delay Ctrl-C
constexpr auto longestStillness = 5s; // even a null output needs up to two seconds to start

std::string noDevice(const std::string& detail = {}) {
    return "no sound device was found" + (detail.empty() ? "" : " (" + detail + ")") +
           "; connect one, or start the sound server (PulseAudio or PipeWire)";
}

} // namespace

SdlPlayer::SdlPlayer() : samplesAtOnce_(usualBuffer) {
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // Ctrl-C belongs to the program
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Cabslot");
    silenceAlsaMessages();
}

SdlPlayer::~SdlPlayer() {
    close();
}

void SdlPlayer::close() {
    if (device_ != 0)
        SDL_CloseAudioDevice(device_);
    if (connected_)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    device_ = 0;
    connected_ = false;
}

std::string SdlPlayer::whyNoDevice() {
    if (device_ != 0)
        return {};
    close(); // an earlier result may be out of date
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return noDevice(SDL_GetError());
    connected_ = true;
    if (SDL_GetNumAudioDevices(0) != 0) // negative: the number is unknown
        return {};
    close();
    return noDevice();
}

std::string SdlPlayer::start() {
    if (std::string why = whyNoDevice(); !why.empty())
        return why;
    mixer_ = std::make_unique<Mixer>();
    if (!openDevice()) {
        std::string why = noDevice(SDL_GetError());
        close();
        return why;
    }
    seenPlayed_ = 0;
    seenAt_ = Clock::now();
    return {};
}

/// Opens the output, which then pulls from the mixer.
bool SdlPlayer::openDevice() {
    meter_ = {};
    starved_ = false;
    isUrgent_ = false;
    const SDL_AudioSpec wanted = {.freq = static_cast<int>(soundRate),
                                  .format = AUDIO_F32SYS,
                                  .channels = 1,
                                  .silence = 0,
                                  .samples = samplesAtOnce_,
                                  .padding = 0,
                                  .size = 0,
                                  .callback = pull,
                                  .userdata = this};
    device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ != 0)
        SDL_PauseAudioDevice(device_, 0);
    return device_ != 0;
}

/// Runs on the sound thread.
void SdlPlayer::pull(void* player, Uint8* bytes, int size) {
    auto& self = *static_cast<SdlPlayer*>(player);
    if (!std::exchange(self.isUrgent_, true) &&
        SDL_SetThreadPriority(SDL_THREAD_PRIORITY_TIME_CRITICAL) != 0)
        SDL_SetThreadPriority(SDL_THREAD_PRIORITY_HIGH); // what the system offers
    const std::size_t count = static_cast<std::size_t>(size) / sizeof(float);
    const std::chrono::duration<double> now = Clock::now().time_since_epoch();
    self.meter_.taken(count, now.count(), soundRate);
    if (self.meter_.starved())
        self.starved_ = true;
    self.mixer_->pull({reinterpret_cast<float*>(bytes), count});
}

void SdlPlayer::play(std::shared_ptr<const Rendering> next) {
    if (mixer_)
        mixer_->play(std::move(next));
}

void SdlPlayer::stop() {
    if (device_ == 0)
        return;
    mixer_->play(nullptr);
    const auto end = Clock::now() + longestFadeOut;
    while (!mixer_->isSilent() && Clock::now() < end)
        std::this_thread::sleep_for(2ms);
    close();
}

std::string SdlPlayer::whyStopped() {
    if (device_ == 0)
        return {};
    if (SDL_GetAudioDeviceStatus(device_) != SDL_AUDIO_PLAYING)
        return "the sound server or the sound device went away";
    if (starved_ && samplesAtOnce_ == usualBuffer) { // one more gap, and then none
        samplesAtOnce_ = largerBuffer;
        SDL_CloseAudioDevice(device_);
        if (!openDevice())
            return noDevice(SDL_GetError());
    }
    const std::size_t played = mixer_->played();
    if (std::exchange(seenPlayed_, played) != played || mixer_->isSilent())
        seenAt_ = Clock::now();
    return Clock::now() - seenAt_ < longestStillness ? "" : "the sound server does not answer";
}

} // namespace cabslot
