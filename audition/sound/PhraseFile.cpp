#include "audition/sound/PhraseFile.h"

#include "audition/sound/Convolver.h"
#include "audition/sound/Loudness.h"
#include "base/InputFile.h"

#include <sndfile.h>
#include <soxr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <span>
#include <type_traits>
#include <utility>

namespace cabslot {

namespace {

// Of a float file, full scale 1.0. Anything beyond is damage, and resampling the largest floats
// gives NaN.
constexpr float greatestSample = 1e6F;

constexpr int highestRate = 768'000;        // Hz
constexpr std::size_t samplesAtOnce = 8192; // of all channels: a header may claim 1024 of them

PhraseSamples refused(std::string whyNot) {
    PhraseSamples phrase;
    phrase.whyNot = std::move(whyNot);
    return phrase;
}

/// What libsndfile reads: a file that is open already, so that nothing can be swapped in, and
/// without a name, so that no ending makes sound of a file without a header.
struct Input {
    InputFile file;
    sf_count_t position = 0;
};

Input& inputOf(void* user) {
    return *static_cast<Input*>(user);
}

sf_count_t sizeOf(void* user) {
    return static_cast<sf_count_t>(inputOf(user).file.size());
}

sf_count_t seek(sf_count_t offset, int whence, void* user) {
    const sf_count_t from = whence == SEEK_CUR   ? inputOf(user).position
                            : whence == SEEK_END ? sizeOf(user)
                                                 : 0;
    return inputOf(user).position = std::clamp<sf_count_t>(from + offset, 0, sizeOf(user));
}

sf_count_t read(void* to, sf_count_t count, void* user) {
    Input& input = inputOf(user);
    count = std::clamp<sf_count_t>(sizeOf(user) - input.position, 0, count);
    const std::span bytes(static_cast<std::uint8_t*>(to), static_cast<std::size_t>(count));
    if (!input.file.read(static_cast<std::uint64_t>(input.position), bytes).empty())
        return 0;
    input.position += count;
    return count;
}

sf_count_t position(void* user) {
    return inputOf(user).position;
}

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using OpenSound = std::unique_ptr<SNDFILE, CloseSound>;

/// Converts to 44.1 kHz part by part, so that only the result is in memory. The passband is flat to
/// 20 kHz.
class Resampler {
public:
    explicit Resampler(double rate) {
        const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
        if (rate == soundRate)
            return;
        state_.reset(soxr_create(rate, soundRate, 1, nullptr, nullptr, &quality, nullptr));
        failed_ = !state_;
    }

    void take(std::span<const float> part) {
        if (!state_)
            output_.insert(output_.end(), part.begin(), part.end());
        for (bool more = state_ != nullptr; more;) {
            std::size_t used = 0;
            const std::size_t made = process(part.data(), part.size(), used);
            part = part.subspan(used);
            more = !part.empty() || made == room_.size();
        }
    }

    /// All of it, and what is still inside; empty on failure.
    std::vector<float> finished() {
        std::size_t none = 0;
        while (state_ && process(nullptr, 0, none) > 0)
            continue;
        return failed_ ? std::vector<float>() : std::move(output_);
    }

private:
    std::size_t process(const float* samples, std::size_t size, std::size_t& used) {
        std::size_t made = 0;
        if (soxr_process(state_.get(), samples, size, &used, room_.data(), room_.size(), &made)) {
            failed_ = true;
            used = size;
            return 0;
        }
        output_.insert(output_.end(), room_.begin(),
                       room_.begin() + static_cast<std::ptrdiff_t>(made));
        return made;
    }

    struct Delete {
        void operator()(soxr_t state) const { soxr_delete(state); }
    };
    std::unique_ptr<std::remove_pointer_t<soxr_t>, Delete> state_; ///< null at 44.1 kHz
    bool failed_ = false;
    std::array<float, samplesAtOnce> room_{};
    std::vector<float> output_;
};

/// What was read of a phrase.
struct Reading {
    std::size_t frames = 0;
    bool isSilent = true;
};

/// The mean of all channels, at most `most` frames. NaN and samples beyond greatestSample count as
/// silence.
Reading readMono(SNDFILE& file, std::size_t channels, std::size_t most, Resampler& resampler) {
    Reading reading;
    const std::size_t framesAtOnce = std::max<std::size_t>(samplesAtOnce / channels, 1);
    std::vector<float> frames(framesAtOnce * channels);
    std::vector<float> mono(framesAtOnce);
    while (reading.frames < most) {
        const std::size_t wanted = std::min(framesAtOnce, most - reading.frames);
        const auto read = sf_readf_float(&file, frames.data(), static_cast<sf_count_t>(wanted));
        if (read <= 0)
            break;
        const auto count = static_cast<std::size_t>(read);
        for (std::size_t i = 0; i < count; ++i) {
            const float* const frame = frames.data() + i * channels;
            const float sum = std::accumulate(frame, frame + channels, 0.0F);
            mono[i] = std::abs(sum) <= greatestSample ? sum / static_cast<float>(channels) : 0;
            reading.isSilent = reading.isSilent && mono[i] == 0;
        }
        resampler.take(std::span(mono).first(count));
        reading.frames += count;
    }
    return reading;
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
    Input input;
    if (std::string why = input.file.open(path); !why.empty())
        return refused(std::move(why));
    SF_VIRTUAL_IO io = {sizeOf, seek, read, nullptr, position};
    SF_INFO info{};
    const OpenSound file(sf_open_virtual(&io, SFM_READ, &info, &input));
    if (!file)
        return refused(std::string("it is not a readable sound file: ") + sf_strerror(nullptr));
    const std::string rateText = std::to_string(info.samplerate) + " Hz";
    if (info.samplerate > highestRate)
        return refused("its sample rate, " + rateText + ", is beyond 768000 Hz");

    const double rate = info.samplerate;
    const auto most = static_cast<std::size_t>(longestPhrase * rate);
    Resampler resampler(rate);
    const Reading reading =
        readMono(*file, static_cast<std::size_t>(info.channels), most, resampler);
    if (static_cast<double>(reading.frames) < shortestPhrase * rate)
        return refused("it is shorter than half a second");
    if (reading.isSilent)
        return refused("it is silent");
    PhraseSamples phrase;
    phrase.isCut = info.frames > static_cast<sf_count_t>(most);
    phrase.samples = resampler.finished();
    if (phrase.samples.empty())
        return refused("it cannot be resampled from " + rateText + " to 44100 Hz");
    return phrase;
}

std::unique_ptr<Phrase> makePhrase(const PhraseSamples& phrase) {
    return std::make_unique<RenderingPhrase>(phrase);
}

} // namespace cabslot
