#include "prepare/Prepare.h"

#include "analysis/Words.h"
#include "irfile/SampleFormat.h"
#include "irfile/WavBytes.h"
#include "prepare/Loudness.h"
#include "prepare/MinimumPhase.h"
#include "prepare/Steps.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace cabslot {

namespace {

constexpr std::size_t keptBefore = 8;   // points before the onset that are kept
constexpr double inaudible = 1e-4;      // of the peak; -80 dB
constexpr double audibleChange = 0.005; // dB; smaller changes are not reported

std::string millisecondsText(std::size_t points) {
    return fixedText(static_cast<double>(points) * 1000 / pointsPerSecond, 1) + " ms";
}

std::string gainText(double gain) {
    return (gain > 0 ? "+" : "") + fixedText(gain, 1) + " dB";
}

/// The requested channel, or the mean of all, as far as the file is in memory. NaN and infinite
/// samples count as 0.
Signal channelOf(const IRFile& file, Channel channel) {
    const std::uint16_t count = channel == Channel::mean ? file.channelCount() : 1;
    Signal sum;
    for (std::uint16_t i = 0; i < count; ++i) {
        std::vector<float> values(static_cast<std::size_t>(file.heldFrames()));
        values.resize(file.readChannel(i, 0, values));
        sum.resize(std::max(sum.size(), values.size()));
        for (std::size_t k = 0; k < values.size(); ++k)
            sum[k] += std::isfinite(values[k]) ? static_cast<double>(values[k]) / count : 0;
    }
    return sum;
}

/// Applies the steps to one file.
class Preparation {
public:
    Preparation(const ReadIR& read, const PrepareOptions& options)
        : options_(options), file_(read.file), ir_(read.ir) {}

    PreparedIR run() {
        takeIn();
        makeMinimumPhase(); // of the whole signal: a missing start would change the response
        trim();
        cut();
        setLevel();
        return write();
    }

private:
    void say(const std::string& sentence) { steps_.push_back(sentence); }

    // Sets signal_, at 44.1 kHz.
    void takeIn() {
        const double rate = file_.sampleRate();
        if (rate == pointsPerSecond) {
            signal_ = channelOf(file_, options_.channel);
        } else if (options_.resample) {
            signal_ = resampled(channelOf(file_, options_.channel), rate);
            say("Resampled from " + std::to_string(file_.sampleRate()) + " Hz to 44100 Hz.");
        } else {
            const Samples samples = samplesOf(ir_.block);
            signal_.assign(samples.begin(), samples.end());
        }
    }

    void trim() {
        const std::size_t onset = onsetOf(signal_);
        if (!options_.trim || onset <= keptBefore)
            return;
        const std::size_t gone = onset - keptBefore;
        signal_.erase(signal_.begin(), signal_.begin() + static_cast<std::ptrdiff_t>(gone));
        if (const std::string time = millisecondsText(gone); time != "0.0 ms")
            say("Trimmed " + time + " before the onset.");
    }

    void makeMinimumPhase() {
        if (!options_.minimumPhase)
            return;
        signal_ = minimumPhase(signal_, irPointCount);
        say("Made minimum phase: the energy comes as early as it can.");
    }

    void cut() {
        dropEnd(0, 0.5 / double{fullScale});
        dropEnd(irPointCount, inaudible * peakOf(signal_));
        if (signal_.size() <= irPointCount)
            return;
        signal_.resize(irPointCount);
        const auto length =
            static_cast<std::size_t>(std::lround(options_.fade * pointsPerSecond / 1000));
        if (length == 0)
            return;
        fadeOut(signal_, length);
        say("Faded out over the last " + millisecondsText(length) + ".");
    }

    /// Removes points below `level` from the end, such as a resampling filter's ringing; keeps at
    /// least `kept` points.
    void dropEnd(std::size_t kept, double level) {
        while (signal_.size() > kept && std::abs(signal_.back()) < level)
            signal_.pop_back();
    }

    void setLevel() {
        const double peak = peakOf(signal_);
        if (peak == 0)
            return;
        const double highest = std::pow(10, usualPeak / 20) / peak;
        double factor = 1;
        if (options_.level == LevelGoal::peak)
            factor = highest;
        else if (options_.level == LevelGoal::loudness)
            factor = std::pow(10, (options_.loudness - noiseLoudness(signal_)) / 20);
        // A kept level may reach full scale; the other goals stay within usualPeak.
        const double limit = options_.level == LevelGoal::keep
                                 ? (double{fullScale} - 1) / double{fullScale} / peak
                                 : highest;
        const bool held = factor > limit && limit < 1e9;
        factor = std::isfinite(factor) ? std::min(factor, limit) : 1;
        scale(signal_, factor);
        const double gain = 20 * std::log10(factor);
        if (std::abs(gain) > audibleChange)
            say("Level " + gainText(gain) +
                (held && options_.level != LevelGoal::peak ? ": more would clip." : "."));
    }

    PreparedIR write() {
        PreparedIR result{.whyRefused = {}, .ir = ir_, .plain = ir_.block, .wav = {}, .steps = {}};
        result.ir.block = {};
        std::vector<float> samples(signal_.size());
        for (std::size_t i = 0; i < signal_.size(); ++i) {
            const auto point =
                static_cast<std::int32_t>(std::clamp(std::round(signal_[i] * double{fullScale}),
                                                     -double{fullScale}, double{fullScale} - 1));
            result.ir.block[i] = static_cast<std::uint32_t>(point) & sampleMask;
            samples[i] = static_cast<float>(point) / fullScale; // exact
        }
        result.wav = wavBytes(samples);
        result.steps = std::move(steps_);
        return result;
    }

    const PrepareOptions& options_;
    const IRFile& file_;
    const IR& ir_;
    Signal signal_;
    std::vector<std::string> steps_;
};

/// The plain block as a file, with as many points as the file fills.
PreparedIR unchanged(const ReadIR& read) {
    const IRFile& file = read.file;
    const std::size_t count = std::min<std::size_t>(
        irPointCount, file.sampleRate() == pointsPerSecond ? file.decodedPoints() : irPointCount);
    const Block& plain = read.ir.block;
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<float>(signedSample(plain[i])) / fullScale;
    PreparedIR result{.whyRefused = {}, .ir = read.ir, .plain = plain, .wav = {}, .steps = {}};
    for (std::uint32_t& point : result.ir.block)
        point &= sampleMask;
    result.wav = wavBytes(samples);
    return result;
}

} // namespace

PrepareOptions PrepareOptions::nothing() {
    return {.resample = false, .trim = false, .fade = 0, .level = LevelGoal::keep};
}

bool PrepareOptions::changesNothing() const {
    return channel == Channel::first && !resample && !trim && !minimumPhase && fade == 0 &&
           level == LevelGoal::keep;
}

PreparedIR prepare(const ReadIR& read, const PrepareOptions& options) {
    if (options.changesNothing())
        return unchanged(read);
    if (!read.ir.factory)
        return Preparation(read, options).run();
    PreparedIR result = unchanged(read);
    result.steps = {"A factory IR is passed as it is."};
    return result;
}

PreparedIR prepareFile(const std::string& path, const PrepareOptions& options) {
    const ReadIR read = readIR(path);
    if (read)
        return prepare(read, options);
    return {.whyRefused = read.whyRefused, .wav = {}, .steps = {}};
}

} // namespace cabslot
