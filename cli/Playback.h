// Plays one rendering once, on a separate thread, so that a sound server that does not answer
// blocks only that thread.
#pragma once

#include "audition/Sound.h"
#include "base/BackgroundWork.h"

#include <memory>
#include <string>

namespace cabslot {

class Playback {
public:
    Playback(std::unique_ptr<Player> player, Rendering rendering);
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    /// Ends the sound with a short fade. A thread that is blocked longer is detached.
    ~Playback();

    /// Waits some milliseconds; false when everything has been played or playing has failed.
    bool wait();

    double seconds() const;     ///< of the rendering played so far
    std::string whyNot() const; ///< after wait() returned false: why it ended early, or empty

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
    BackgroundWork thread_;
};

} // namespace cabslot
