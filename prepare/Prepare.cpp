#include "prepare/Prepare.h"

#include "analysis/Findings.h"
#include "analysis/Words.h"
#include "irfile/IRConversion.h"
#include "irfile/SampleFormat.h"
#include "irfile/WavBytes.h"
#include "prepare/Channels.h"
#include "prepare/Filters.h"
#include "prepare/Loudness.h"
#include "prepare/MinimumPhase.h"
#include "prepare/Steps.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace cabslot {

namespace {

constexpr double keptBefore = 8;        // points at 44.1 kHz that are kept before the onset
constexpr double inaudible = 1e-4;      // of the peak; -80 dB
constexpr double audibleChange = 0.005; // dB; smaller changes are not reported
constexpr double tellingShare = 0.001;  // of the energy; a loss of more changes the response
constexpr double lowestShare = 1e-6;    // of the energy; a smaller loss is not reported
constexpr double full{fullScale};

std::string millisecondsText(double milliseconds) {
    return milliseconds < 0.05 ? "less than 0.1 ms" : fixedText(milliseconds, 1) + " ms";
}

std::string gainText(double gain) {
    return (gain > 0 ? "+" : "") + fixedText(gain, 1) + " dB";
}

/// Applies the steps to one file.
class Preparation {
public:
    Preparation(const ReadIR& read, const PrepareOptions& options, const StopCheck& stop)
        : options_(options), stop_(stop), file_(read.file), ir_(read.ir) {}

    PreparedIR run() {
        takeIn();
        if (peakOf(signal_) == 0 && !file_.holdsAllSamples())
            return {.whyRefused =
                        "it is silent as far as it is read, one megabyte; remove the silence "
                        "before the sound",
                    .wav = {},
                    .steps = {}};
        cutFrequencies();
        if (options_.minimumPhase) // of the whole signal: a missing start would change the response
            makeMinimumPhase();
        if (isStopped(stop_))
            return {.whyRefused = "it was interrupted", .wav = {}, .steps = {}};
        if (options_.trim)
            trim();
        cut();
        interpolate();
        setLevel();
        return write();
    }

private:
    void say(const std::string& sentence) { steps_.push_back(sentence); }

    /// Sets signal_, and its rate: 44.1 kHz, or the file's if it is interpolated later.
    void takeIn() {
        rate_ = file_.sampleRate();
        signal_ =
            meanOfChannels(file_, options_.channel == Channel::mean ? file_.channelCount() : 1);
        silence_ = static_cast<double>(onsetOf(signal_)) / rate_;
        if (rate_ == pointsPerSecond || !options_.resample)
            return;
        signal_ = resampled(signal_, rate_);
        rate_ = pointsPerSecond;
        say("Resampled from " + std::to_string(file_.sampleRate()) + " Hz to 44100 Hz.");
    }

    void cutFrequencies() {
        if (options_.lowCut > 0) {
            cutLows(signal_, rate_, options_.lowCut);
            say("Low cut at " + fixedText(options_.lowCut, 0) + " Hz.");
        }
        if (options_.highCut > 0) {
            cutHighs(signal_, rate_, options_.highCut);
            say("High cut at " + fixedText(options_.highCut, 0) + " Hz.");
        }
    }

    void makeMinimumPhase() {
        std::string leftOut;
        if (signal_.size() > longestForMinimumPhase)
            leftOut = takeLoudestPart();
        signal_ = minimumPhase(signal_, limit(), stop_);
        silence_ = 0;
        say("Made minimum phase: the energy comes as early as it can." + leftOut);
    }

    /// Returns what was left out, as a sentence; empty if it was nothing to speak of.
    std::string takeLoudestPart() {
        const double all = energyOf(signal_);
        const double milliseconds = static_cast<double>(signal_.size()) * 1000 / rate_;
        signal_ = loudestPart(signal_, longestForMinimumPhase);
        const double lost = all > 0 ? 1 - energyOf(signal_) / all : 0;
        if (lost < lowestShare)
            return {};
        const double used = static_cast<double>(longestForMinimumPhase) * 1000 / rate_;
        return " Of " + millisecondsText(milliseconds) + " the " + millisecondsText(used) +
               " with the most energy were used; " + shareText(lost) +
               " of the energy was left out.";
    }

    void trim() {
        const std::size_t onset = onsetOf(signal_);
        const std::size_t kept = pointsIn(keptBefore);
        if (onset <= kept)
            return;
        const auto begin = signal_.begin();
        const auto gone = static_cast<std::ptrdiff_t>(onset - kept);
        const double lost = energyOf({begin, begin + gone}) / energyOf(signal_);
        signal_.erase(begin, begin + gone);
        // Of the file's own time: resampling puts some points in front.
        const double milliseconds = silence_ > 0 ? (silence_ - keptBefore / pointsPerSecond) * 1000
                                                 : static_cast<double>(gone) * 1000 / rate_;
        if (lost > tellingShare)
            say("Trimmed " + millisecondsText(milliseconds) + " before the onset, and with it " +
                shareText(lost) +
                " of the energy, which changes the response: minimum phase (--minimum-phase) "
                "keeps it.");
        else if (milliseconds >= 0.05)
            say("Trimmed " + millisecondsText(milliseconds) + " before the onset.");
    }

    void cut() {
        dropEnd(0, 0.5 / full);
        dropEnd(limit(), inaudible * peakOf(signal_));
        if (signal_.size() <= limit())
            return;
        signal_.resize(limit());
        const auto length = static_cast<std::size_t>(std::lround(options_.fade * rate_ / 1000));
        if (length == 0)
            return;
        fadeOut(signal_, length);
        say("Faded out over the last " + millisecondsText(options_.fade) + ".");
    }

    /// Removes points below `level` from the end, such as a resampling filter's ringing; keeps at
    /// least `kept` points.
    void dropEnd(std::size_t kept, double level) {
        while (signal_.size() > kept && std::abs(signal_.back()) < level)
            signal_.pop_back();
    }

    void interpolate() {
        if (rate_ == pointsPerSecond)
            return;
        signal_ = interpolated(signal_, static_cast<std::int32_t>(file_.sampleRate()));
        dropEnd(0, 0.5 / full);
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
        if (factor > 1 && decibels(peak) < almostSilentPeak)
            return say("Almost silent: the level was not raised, for it would be that of noise.");
        // A kept level may reach full scale; the other goals stay within usualPeak.
        const double limit = options_.level == LevelGoal::keep ? (full - 1) / full / peak : highest;
        const bool held = factor > limit;
        factor = std::min(factor, limit);
        scale(signal_, factor);
        const double gain = decibels(factor);
        if (std::abs(gain) > audibleChange || (held && options_.level == LevelGoal::loudness))
            say("Level " + gainText(gain) +
                (held && options_.level != LevelGoal::peak ? ": more would clip." : "."));
    }

    PreparedIR write() {
        PreparedIR result{.whyRefused = {}, .ir = ir_, .plain = ir_.block, .wav = {}, .steps = {}};
        result.ir.block = {};
        std::vector<float> samples(signal_.size());
        for (std::size_t i = 0; i < signal_.size(); ++i) {
            const auto point = static_cast<std::int32_t>(
                std::clamp(std::round(signal_[i] * full), -full, full - 1));
            result.ir.block[i] = static_cast<std::uint32_t>(point) & sampleMask;
            samples[i] = static_cast<float>(point) / fullScale; // exact
        }
        result.wav = wavBytes(samples);
        result.steps = std::move(steps_);
        return result;
    }

    /// How many points at rate_ those at 44.1 kHz are.
    std::size_t pointsIn(double points) const {
        return static_cast<std::size_t>(std::lround(points * rate_ / pointsPerSecond));
    }

    /// As many points as the pedal can take, at rate_.
    std::size_t limit() const {
        return rate_ == pointsPerSecond ? irPointCount : pointsRead(*findRate(file_.sampleRate()));
    }

    const PrepareOptions& options_;
    const StopCheck& stop_;
    const IRFile& file_;
    const IR& ir_;
    Signal signal_;
    double rate_ = 0;    ///< Hz
    double silence_ = 0; ///< seconds before the onset, in the file; 0: not known
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
           level == LevelGoal::keep && lowCut == 0 && highCut == 0;
}

PreparedIR prepare(const ReadIR& read, const PrepareOptions& options, const StopCheck& stop) {
    if (options.changesNothing())
        return unchanged(read);
    if (!read.ir.factory)
        return Preparation(read, options, stop).run();
    PreparedIR result = unchanged(read);
    result.steps = {"A factory IR is passed as it is."};
    return result;
}

PreparedIR prepareFile(const std::string& path, const PrepareOptions& options,
                       const StopCheck& stop) {
    const ReadIR read = readIR(path, stop);
    if (read)
        return prepare(read, options, stop);
    return {.whyRefused = read.whyRefused, .wav = {}, .steps = {}};
}

} // namespace cabslot
