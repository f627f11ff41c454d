#include "audition/sound/SdlPlayer.h"

#include "audition/sound/AlsaMessages.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr Uint16 usualBuffer = 1024;    // samples, 23 ms: smaller buffers run dry on a busy machine
constexpr Uint16 largerBuffer = 4096;   // 93 ms, where even the usual one has run dry
constexpr auto longestFadeOut = 80ms;   // a server that hangs must not delay Ctrl-C
constexpr auto longestTakeover = 300ms; // from one output to another
constexpr auto longestStillness = 5s;   // even a null output needs up to two seconds to start

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

SdlPlayer::Output::~Output() {
    if (device != 0)
        SDL_CloseAudioDevice(device);
}

bool SdlPlayer::Output::open(Uint16 samplesAtOnce) {
    const auto fill = [](void* output, Uint8* bytes, int size) {
        static_cast<Output*>(output)->pull(
            {reinterpret_cast<float*>(bytes), static_cast<std::size_t>(size) / sizeof(float)});
    };
    const SDL_AudioSpec wanted = {.freq = static_cast<int>(soundRate),
                                  .format = AUDIO_F32SYS,
                                  .channels = 1,
                                  .silence = 0,
                                  .samples = samplesAtOnce,
                                  .padding = 0,
                                  .size = 0,
                                  .callback = fill,
                                  .userdata = this};
    device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device != 0)
        SDL_PauseAudioDevice(device, 0);
    return device != 0;
}

/// Runs on the output's own thread.
void SdlPlayer::Output::pull(std::span<float> samples) {
    const std::lock_guard lock(player.pulling_); // waited for only while outputs change
    if (!std::exchange(hasBegun, true)) {
        if (SDL_SetThreadPriority(SDL_THREAD_PRIORITY_TIME_CRITICAL) != 0)
            SDL_SetThreadPriority(SDL_THREAD_PRIORITY_HIGH); // what the system offers
        player.current_ = this;
    }
    const std::chrono::duration<double> now = Clock::now().time_since_epoch();
    meter.taken(samples.size(), now.count(), soundRate);
    starved = meter.starved();
    if (player.current_ == this)
        player.mixer_->pull(samples);
    else
        std::ranges::fill(samples, 0.0F);
}

void SdlPlayer::close() {
    output_.reset();
    if (connected_)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    connected_ = false;
}

std::string SdlPlayer::whyNoDevice() {
    if (output_)
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
    output_ = std::make_unique<Output>(*this);
    if (!output_->open(samplesAtOnce_)) {
        std::string why = noDevice(SDL_GetError());
        close();
        return why;
    }
    seenPlayed_ = 0;
    seenAt_ = Clock::now();
    return {};
}

void SdlPlayer::play(std::shared_ptr<const Rendering> next) {
    if (mixer_)
        mixer_->play(std::move(next));
}

void SdlPlayer::stop() {
    if (!output_)
        return;
    mixer_->play(nullptr);
    const auto end = Clock::now() + longestFadeOut;
    while (!mixer_->isSilent() && Clock::now() < end)
        std::this_thread::sleep_for(2ms);
    close();
}

/// Opens a second output, which takes over when it begins: an output that is closed first leaves a
/// gap of up to two seconds on some servers. Without a second one, the first one stays.
void SdlPlayer::enlargeBuffer() {
    samplesAtOnce_ = largerBuffer;
    auto larger = std::make_unique<Output>(*this);
    if (!larger->open(samplesAtOnce_))
        return;
    const auto end = Clock::now() + longestTakeover;
    while (current_ != larger.get() && Clock::now() < end)
        std::this_thread::sleep_for(2ms);
    output_.swap(larger);
}

std::string SdlPlayer::whyStopped() {
    if (!output_)
        return {};
    if (SDL_GetAudioDeviceStatus(output_->device) != SDL_AUDIO_PLAYING)
        return "the sound server or the sound device went away";
    if (output_->starved && samplesAtOnce_ == usualBuffer)
        enlargeBuffer();
    const std::size_t played = mixer_->played();
    if (std::exchange(seenPlayed_, played) != played || mixer_->isSilent())
        seenAt_ = Clock::now();
    return Clock::now() - seenAt_ < longestStillness ? "" : "the sound server does not answer";
}

} // namespace cabslot
