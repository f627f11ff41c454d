// One rendering played once, on a thread of its own: a sound server that does not answer holds up
// that thread and not the program.
#pragma once

#include "audition/Sound.h"

#include <memory>
#include <string>

namespace cabslot {

class Playback {
public:
    Playback(std::unique_ptr<Player> player, Rendering rendering);
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    /// Ends the sound with a short fade. A thread that is held up longer is left to itself.
    ~Playback();

    /// Passes some milliseconds; false when all has been played or it could not be.
    bool wait();

    double seconds() const;     ///< of the rendering that were played
    std::string whyNot() const; ///< when wait() has returned false: why it ended early, or empty

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

} // namespace cabslot
