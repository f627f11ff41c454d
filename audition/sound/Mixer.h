// Supplies the sound sample by sample: a rendering in a loop, and the cross-fade to another one.
#pragma once

#include "audition/Sound.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <span>

namespace cabslot {

class Mixer {
public:
    static constexpr std::size_t fadeSize = 882; // samples: 20 ms

    /// Fades to `next` at the same position in the phrase; null: to silence. During a fade, the
    /// latest `next` waits until it ends. Any thread except the one that pulls.
    void play(std::shared_ptr<const Rendering> next);

    /// Fills `output`. Never blocks or frees memory, as an audio thread must not.
    void pull(std::span<float> output);

    std::size_t played() const { return played_; } ///< samples, from the first rendering's start
    unsigned changes() const { return changes_; }  ///< renderings that have started to play

    /// Nothing is playing or waiting to play.
    bool isSilent() const { return silent_; }

private:
    void takeNext();

    std::mutex mutex_; ///< protects the next three; pull() only tries to lock it
    bool pending_ = false;
    std::shared_ptr<const Rendering> next_;
    std::shared_ptr<const Rendering> faded_; ///< kept for play() to free

    std::shared_ptr<const Rendering> from_;
    std::shared_ptr<const Rendering> to_;
    std::size_t fade_ = fadeSize; ///< samples of the fade already played

    std::atomic<std::size_t> played_ = 0;
    std::atomic<unsigned> changes_ = 0;
    std::atomic<bool> silent_ = true;
};

} // namespace cabslot
