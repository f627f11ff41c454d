#include "analysis/Findings.h"

#include "analysis/Words.h"
#include "base/VisibleText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cabslot {

namespace {

// The largest 16-bit sample; a float sample can come closer to full scale.
constexpr double atFullScale = 32767.0 / 32768;
// Between neighbouring points; the widest possible is 2. An IR hardly reaches it by itself, while a
// sample that is slightly too large and wraps jumps by almost 2.
constexpr double wrappingJump = 1.75;
constexpr double audible = 0.001;      // of the peak; -60 dB
constexpr double toleratedSilence = 1; // ms; sound travelling from speaker to microphone

// In the order of FindingKind.
constexpr std::array<std::string_view, 12> kindNames = {
    "misplaced_tag", "too_many_channels", "silent",  "almost_silent", "very_quiet",
    "eight_bits",    "beyond_full_scale", "clipped", "wrapped",       "claims_more",
    "cut_off",       "starts_late"};
static_assert(kindNames.size() == static_cast<std::size_t>(FindingKind::startsLate) + 1);

using Found = std::optional<Finding>;

std::string millisecondsText(double milliseconds) {
    return fixedText(milliseconds, 1) + " ms";
}

Found misplacedTag(const FileFacts& facts) {
    if (facts.misplaced.tag.empty())
        return {};
    return Finding{FindingKind::misplacedTag,
                   "Read from the wrong place: \"" + facts.misplaced.tag + "\" is inside the \"" +
                       visibleText(facts.misplaced.insideOf) +
                       "\" chunk, such as in a comment, and is used as the chunk of that name. "
                       "Save the file without comments and markers."};
}

Found tooManyChannels(const FileFacts& facts) {
    if (facts.channels <= usableChannels)
        return {};
    return Finding{FindingKind::tooManyChannels,
                   std::to_string(facts.channels) +
                       " channels: only files with one or two can be used, so the pedal gets "
                       "silence. Save the file as mono."};
}

Found quiet(const Samples& samples) {
    const auto peak = peakDbfs(samples);
    if (!peak)
        return Finding{FindingKind::silent, "Silent: all points are zero."};
    if (*peak < almostSilentPeak)
        return Finding{FindingKind::almostSilent, "Almost silent: the peak is at " +
                                                      dbfsText(peak) + ", which is noise at most."};
    if (*peak < veryQuietPeak)
        return Finding{FindingKind::veryQuiet,
                       "Very quiet: the peak is at " + dbfsText(peak) + ". Prepare raises it."};
    return {};
}

Found eightBits(const FileFacts& facts) {
    if (facts.bits != 8)
        return {};
    return Finding{FindingKind::eightBits,
                   "8 bits: such files store silence as 128, which reaches the pedal as -1.0. "
                   "Every zero crossing becomes a jump between the two ends of the scale. Save "
                   "the file with 16 bits or more."};
}

Found beyondFullScale(const FileFacts& facts) {
    if (facts.beyond + facts.noNumbers == 0)
        return {};
    std::string text = "Beyond full scale: ";
    if (facts.beyond > 0) {
        const std::string excess = fixedText(decibels(facts.largest), 1) + " dB";
        text += countText(facts.beyond, "sample") + " too large, by up to " + excess +
                ". They are not clipped but wrap round to wrong values. Save the file at least " +
                excess + " lower.";
    }
    if (facts.beyond > 0 && facts.noNumbers > 0)
        text += " And ";
    if (facts.noNumbers > 0)
        text += countText(facts.noNumbers, "sample") +
                " infinite or not a number, which count as -1.0.";
    return Finding{FindingKind::beyondFullScale, text};
}

bool bothAtOneEnd(double one, double other) {
    return std::min(std::abs(one), std::abs(other)) >= atFullScale && (one > 0) == (other > 0);
}

// A single point at full scale is normal: a normalised IR has one.
Found clipped(const Samples& samples) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if ((i > 0 && bothAtOneEnd(samples[i - 1], samples[i])) ||
            (i + 1 < samples.size() && bothAtOneEnd(samples[i], samples[i + 1])))
            ++count;
    if (count == 0)
        return {};
    return Finding{FindingKind::clipped,
                   "Clipped: " + std::to_string(count) +
                       " neighbouring points are at full scale; the peaks were cut flat."};
}

Found wrapped(const Samples& samples) {
    std::size_t count = 0;
    for (std::size_t i = 1; i < samples.size(); ++i)
        if (std::abs(samples[i] - samples[i - 1]) > wrappingJump)
            ++count;
    if (count == 0)
        return {};
    return Finding{FindingKind::wrapped,
                   "Probably wrapped: " + countText(count, "jump") +
                       " between neighbouring points from one end of the scale to the other. "
                       "Samples that were too large and wrapped round look like this."};
}

Found claimsMore(const FileFacts& facts) {
    if (facts.claimed <= facts.held)
        return {};
    return Finding{FindingKind::claimsMore,
                   "Claims too much: the file claims " + countText(facts.claimed, "frame") +
                       " but holds " + std::to_string(facts.held) +
                       ". It may have been cut short; missing frames count as silence."};
}

Found cutOff(const FileFacts& facts) {
    if (facts.frames <= facts.used)
        return {};
    const double milliseconds = static_cast<double>(facts.frames) * 1000 / facts.sampleRate;
    const std::string taken =
        "Cut off: the pedal takes the first " + millisecondsText(blockMilliseconds) + " of " +
        (facts.moreFollows ? "more than " : "") + millisecondsText(milliseconds) + "; ";
    if (facts.energyBehind == 0)
        return Finding{FindingKind::cutOff,
                       taken + "the rest" + (facts.moreFollows ? " of that" : "") + " is silence."};
    return Finding{FindingKind::cutOff, taken + (facts.moreFollows ? "at least " : "") +
                                            shareText(facts.energyBehind / facts.energy) +
                                            " of the energy is lost."};
}

Found startsLate(const Samples& samples) {
    const double threshold = audible * peakOf(samples);
    const auto first = std::find_if(samples.begin(), samples.end(), [threshold](double sample) {
        return std::abs(sample) > threshold;
    });
    if (first == samples.end())
        return {};
    const double milliseconds =
        static_cast<double>(first - samples.begin()) * 1000 / pointsPerSecond;
    if (milliseconds < toleratedSilence)
        return {};
    return Finding{FindingKind::startsLate,
                   "Starts late: " + millisecondsText(milliseconds) +
                       " of silence come first, which are heard as a delay and leave " +
                       millisecondsText(blockMilliseconds - milliseconds) + " for the IR."};
}

} // namespace

std::string_view nameOf(FindingKind kind) {
    return kindNames.at(static_cast<std::size_t>(kind));
}

std::optional<FindingKind> findingKind(std::string_view name) {
    const auto found = std::ranges::find(kindNames, name);
    if (found == kindNames.end())
        return {};
    return static_cast<FindingKind>(found - kindNames.begin());
}

std::vector<Finding> findingsOf(const Samples& samples, const FileFacts& facts) {
    std::vector<Finding> findings;
    const auto add = [&findings](Found found) {
        if (found)
            findings.push_back(std::move(*found));
        return found.has_value();
    };
    add(misplacedTag(facts));
    if (add(tooManyChannels(facts)))
        return findings;
    add(quiet(samples));
    // If the cause is known, its effect on the block is not reported as well.
    const bool eight = add(eightBits(facts));
    if (!add(beyondFullScale(facts)) && !eight) {
        add(clipped(samples));
        add(wrapped(samples));
    }
    add(claimsMore(facts));
    add(cutOff(facts));
    add(startsLate(samples));
    return findings;
}

} // namespace cabslot
