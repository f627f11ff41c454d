#include "audition/sound/PhraseFile.h"

#include "audition/sound/Convolver.h"
#include "audition/sound/Loudness.h"

#include <sndfile.h>
#include <soxr.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace cabslot {

namespace {

// Of a float file, full scale 1.0. Anything beyond is damage, and resampling the largest floats
// gives NaN.
constexpr float greatestSample = 1e6F;

constexpr std::size_t samplesAtOnce = 8192; // of all channels: a header may claim 1024 of them

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, CloseSound>;

PhraseSamples refused(std::string whyNot) {
    PhraseSamples phrase;
    phrase.whyNot = std::move(whyNot);
    return phrase;
}

/// The mean of all channels, at most `most` frames. NaN and samples beyond greatestSample count as
/// silence.
std::vector<float> readMono(SNDFILE& file, std::size_t channels, std::size_t most) {
    std::vector<float> mono;
    const std::size_t framesAtOnce = std::max<std::size_t>(samplesAtOnce / channels, 1);
    std::vector<float> frames(framesAtOnce * channels);
    while (mono.size() < most) {
        const std::size_t wanted = std::min(framesAtOnce, most - mono.size());
        const auto count = sf_readf_float(&file, frames.data(), static_cast<sf_count_t>(wanted));
        if (count <= 0)
            break;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            float sum = 0;
            for (std::size_t channel = 0; channel < channels; ++channel)
                sum += frames[i * channels + channel];
            mono.push_back(std::abs(sum) <= greatestSample ? sum / static_cast<float>(channels)
                                                           : 0);
        }
    }
    return mono;
}

/// Empty on failure.
std::vector<float> resampled(std::vector<float> samples, double rate) {
    if (rate == soundRate)
        return samples;
    const double count = static_cast<double>(samples.size()) * soundRate / rate;
    std::vector<float> output(static_cast<std::size_t>(std::ceil(count)));
    std::size_t done = 0;
    if (soxr_oneshot(rate, soundRate, 1, samples.data(), samples.size(), nullptr, output.data(),
                     output.size(), &done, nullptr, nullptr, nullptr) != nullptr)
        done = 0;
    output.resize(done);
    return output;
}

class RenderingPhrase final : public Phrase {
public:
    explicit RenderingPhrase(const PhraseSamples& phrase)
        : convolver_(phrase.samples), isCut_(phrase.isCut) {}

    std::size_t size() const override { return convolver_.phraseSize(); }
    bool isCut() const override { return isCut_; }

    Rendering render(const Samples& ir, Level level) const override {
        Rendering rendering{.samples = convolver_.convolve(ir), .loop = size()};
        setLevel(rendering, level);
        return rendering;
    }

private:
    Convolver convolver_;
    bool isCut_;
};

} // namespace

PhraseSamples readPhrase(const std::string& path) {
    std::error_code unknown;
    const auto status = std::filesystem::status(path, unknown);
    if (!std::filesystem::exists(status))
        return refused("there is no such file");
    if (!std::filesystem::is_regular_file(status)) // opening a pipe would block
        return refused("it is not a file");
    SF_INFO info{};
    const SoundFile file(sf_open(path.c_str(), SFM_READ, &info));
    if (!file)
        return refused(std::string("it is not a readable sound file: ") + sf_strerror(nullptr));

    const double rate = info.samplerate;
    PhraseSamples phrase;
    const auto most = static_cast<std::size_t>(longestPhrase * rate);
    std::vector<float> mono = readMono(*file, static_cast<std::size_t>(info.channels), most);
    phrase.isCut = info.frames > static_cast<sf_count_t>(most);
    if (static_cast<double>(mono.size()) < shortestPhrase * rate)
        return refused("it is shorter than half a second");
    if (std::ranges::all_of(mono, [](float sample) { return sample == 0; }))
        return refused("it is silent");
    phrase.samples = resampled(std::move(mono), rate);
    if (phrase.samples.empty())
        return refused("it cannot be resampled from " + std::to_string(info.samplerate) +
                       " Hz to 44100 Hz");
    return phrase;
}

std::unique_ptr<Phrase> makePhrase(const PhraseSamples& phrase) {
    return std::make_unique<RenderingPhrase>(phrase);
}

} // namespace cabslot
