#include "audition/sound/Mixer.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace cabslot {

namespace {

float sampleAt(const Rendering* rendering, std::size_t played) {
    if (rendering == nullptr)
        return 0;
    const std::vector<float>& samples = rendering->samples;
    const std::size_t loop = rendering->loop;
    if (loop == 0)
        return played < samples.size() ? samples[played] : 0;
    // From the second repetition on, the decay of the previous one is added.
    const std::size_t at = played % loop;
    const std::size_t late = loop + at;
    return samples[at] + (played >= loop && late < samples.size() ? samples[late] : 0);
}

// The shares of both sides add up to 1: they play the same phrase, so their sum keeps the level and
// its peaks do not exceed theirs.
float shareOf(std::size_t fade) {
    const double done = static_cast<double>(fade) / static_cast<double>(Mixer::fadeSize);
    return static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * done));
}

} // namespace

void Mixer::play(std::shared_ptr<const Rendering> next) {
    std::shared_ptr<const Rendering> old; // freed after the lock is released: freeing is slow
    const std::lock_guard lock(mutex_);
    old = std::move(faded_);
    std::swap(next_, next);
    pending_ = true;
    silent_ = false;
}

void Mixer::takeNext() {
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock.owns_lock())
        return;
    if (!pending_) {
        silent_ = to_ == nullptr;
        return;
    }
    pending_ = false;
    faded_ = std::move(from_);
    from_ = std::move(to_);
    to_ = std::move(next_);
    fade_ = 0;
    if (to_)
        ++changes_;
}

void Mixer::pull(std::span<float> output) {
    for (float& sample : output) {
        if (fade_ == fadeSize)
            takeNext();
        sample = sampleAt(to_.get(), played_);
        if (fade_ < fadeSize) {
            const float share = shareOf(++fade_);
            sample = share * sample + (1 - share) * sampleAt(from_.get(), played_);
        }
        if (to_ || from_)
            ++played_;
    }
}

} // namespace cabslot
