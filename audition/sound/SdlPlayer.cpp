#include "audition/sound/SdlPlayer.h"

#include "audition/sound/AlsaMessages.h"

#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr Uint16 samplesAtOnce = 1024; // 23 ms: smaller buffers run dry on a busy machine
constexpr auto longestFadeOut = 80ms;  // a server that hangs must not delay Ctrl-C
constexpr auto longestStillness = 5s;  // even a null output needs up to two seconds to start

std::string noDevice(const std::string& detail = {}) {
    return "no sound device was found" + (detail.empty() ? "" : " (" + detail + ")") +
           "; connect one, or start the sound server (PulseAudio or PipeWire)";
}

void pullFrom(void* mixer, Uint8* bytes, int size) {
    static_cast<Mixer*>(mixer)->pull(
        {reinterpret_cast<float*>(bytes), static_cast<std::size_t>(size) / sizeof(float)});
}

} // namespace

SdlPlayer::SdlPlayer() {
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
    const SDL_AudioSpec wanted = {.freq = static_cast<int>(soundRate),
                                  .format = AUDIO_F32SYS,
                                  .channels = 1,
                                  .silence = 0,
                                  .samples = samplesAtOnce,
                                  .padding = 0,
                                  .size = 0,
                                  .callback = pullFrom,
                                  .userdata = mixer_.get()};
    device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ == 0) {
        std::string why = noDevice(SDL_GetError());
        close();
        return why;
    }
    seenPlayed_ = 0;
    seenAt_ = Clock::now();
    SDL_PauseAudioDevice(device_, 0);
    return {};
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
    const std::size_t played = mixer_->played();
    if (std::exchange(seenPlayed_, played) != played || mixer_->isSilent())
        seenAt_ = Clock::now();
    return Clock::now() - seenAt_ < longestStillness ? "" : "the sound server does not answer";
}

} // namespace cabslot
