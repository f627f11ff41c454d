#include "blend/Blend.h"

#include "analysis/Words.h"
#include "irfile/SampleFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace cabslot {

namespace {

constexpr double full{fullScale};
constexpr double highest = full - 1;
constexpr double tellingShare = 0.001; // of the energy; a greater loss is told

/// Scales the sum to what 24 bits hold, and rounds.
Mixed rounded(const Samples& sum) {
    const auto [low, high] = std::minmax_element(sum.begin(), sum.end());
    const double factor =
        std::min({1.0, full / std::max(-*low * full, 1.0), highest / std::max(*high * full, 1.0)});
    Mixed result{.gain = decibels(factor)};
    for (std::size_t i = 0; i < sum.size(); ++i) {
        const auto point = static_cast<std::int32_t>(std::lround(sum[i] * factor * full));
        result.block[i] = static_cast<std::uint32_t>(point) & sampleMask;
    }
    return result;
}

Fit fitOf(const Samples& first, const Samples& other, bool aligns) {
    Fit fit;
    if (!aligns)
        return fit;
    fit.alignment = align(first, other);
    fit.shift = 0 - fit.alignment->shift; // no -0
    fit.isTurned = fit.alignment->isOpposite;
    return fit;
}

} // namespace

std::string fitText(const Fit& fit) {
    std::string text;
    const auto say = [&text](const std::string& part) {
        text += (text.empty() ? "" : ", ") + part;
    };
    if (fit.alignment && !fit.alignment->isClear)
        say("no clear match, so nothing is shifted");
    else if (fit.shift != 0)
        say("shifted " + fixedText(std::abs(fit.shift) * 1000 / pointsPerSecond, 2) + " ms " +
            (fit.shift < 0 ? "earlier" : "later"));
    else if (fit.alignment)
        say("starts at the same time");
    if (fit.isTurned)
        say("polarity turned");
    if (fit.lost > tellingShare)
        say(shareText(fit.lost) + " of its energy falls outside the 23 ms");
    return text;
}

Blend::Blend(std::span<const Block> irs, bool aligns, std::span<const Polarity> polarities)
    : blocks_(irs.begin(), irs.end()) {
    const Samples first = samplesOf(irs.front());
    for (std::size_t i = 0; i < irs.size(); ++i) {
        const Samples samples = samplesOf(irs[i]);
        Fit fit = fitOf(first, samples, aligns && i > 0);
        const Polarity polarity = i < polarities.size() ? polarities[i] : Polarity::found;
        if (polarity != Polarity::found)
            fit.isTurned = polarity == Polarity::turned;
        else if (i > 0 && fit.alignment && fit.alignment->isClear) // like the first as it is used
            fit.isTurned = fit.isTurned != fits_.front().isTurned;
        shifted_.push_back(shifted(samples, fit.shift));
        if (fit.shift != 0)
            delay_ = std::max(delay_, delayToKeepOnset(shifted_.back()));
        fits_.push_back(fit);
    }
    for (std::size_t i = 0; i < irs.size(); ++i)
        fits_[i].lost = shareOutside(shifted_[i], delay_);
}

Mixed Blend::mix(std::span<const double> weights) const {
    const auto isUsed = [](double weight) { return weight > 0; };
    if (std::ranges::count_if(weights, isUsed) == 1)
        return {blocks_[static_cast<std::size_t>(std::ranges::find_if(weights, isUsed) -
                                                 weights.begin())]};
    const double all = std::accumulate(weights.begin(), weights.end(), 0.0);
    Samples sum{};
    for (std::size_t i = 0; i < shifted_.size(); ++i) {
        const double factor = weights[i] / all * (fits_[i].isTurned ? -1 : 1);
        for (std::size_t place = 0; factor != 0 && place < sum.size(); ++place)
            sum[place] += factor * shifted_[i].at(static_cast<std::ptrdiff_t>(place) -
                                                  static_cast<std::ptrdiff_t>(delay_));
    }
    return rounded(sum);
}

} // namespace cabslot
