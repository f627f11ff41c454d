#include "audition/sound/Loudness.h"

#include <ebur128.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace cabslot {

namespace {

double peakOf(const Rendering& rendering) {
    const std::vector<float>& samples = rendering.samples;
    float peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(sample));
    for (std::size_t i = rendering.loop; rendering.loop > 0 && i < samples.size(); ++i)
        peak =
            std::max(peak, std::abs(samples[i] + samples[(i - rendering.loop) % rendering.loop]));
    return static_cast<double>(peak);
}

void amplify(std::vector<float>& samples, double factor) {
    for (float& sample : samples)
        sample *= static_cast<float>(factor);
}

} // namespace

double loudnessOf(std::span<const float> samples) {
    struct Destroy {
        void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
    };
    const std::unique_ptr<ebur128_state, Destroy> meter(
        ebur128_init(1, static_cast<unsigned long>(soundRate), EBUR128_MODE_I));
    double loudness = quietest;
    if (!meter ||
        ebur128_add_frames_float(meter.get(), samples.data(), samples.size()) != EBUR128_SUCCESS ||
        ebur128_loudness_global(meter.get(), &loudness) != EBUR128_SUCCESS)
        return quietest;
    return std::max(loudness, quietest); // minus infinity for silence
}

// The gate of EBU R128 is absolute: a quiet rendering would be partly or wholly below it. So the
// loudness is measured with the peak at full scale.
void setLevel(Rendering& rendering, Level level) {
    const double peak = peakOf(rendering);
    if (peak == 0)
        return;
    amplify(rendering.samples, 1 / peak);
    const double peakLevel = 20 * std::log10(peak);
    const double measured = loudnessOf(rendering.samples);
    const bool matches = level == Level::matched && measured > quietest;
    const double wanted = matches ? matchedLoudness - measured : peakLevel;
    rendering.heldByPeaks = highestPeak < wanted;
    const double amplified = std::min(wanted, highestPeak);
    amplify(rendering.samples, std::pow(10, amplified / 20));
    rendering.gain = amplified - peakLevel;
    rendering.loudness = std::max(measured + amplified, quietest);
}

} // namespace cabslot
