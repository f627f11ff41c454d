// Plays one IR after another, for a window: every call returns at once. Anything slow (loading the
// module, the sound server, rendering) runs on a separate thread, which starts with the first call.
#pragma once

#include "audition/Sound.h"
#include "base/BackgroundWork.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cabslot {

class Listener {
public:
    enum class State {
        unknown,     ///< no sound device has been looked for yet
        ready,       ///< there is one
        unavailable, ///< there is none; `why` has the reason
        playing,     ///< switched on; silent while there is no IR
    };
    struct Status {
        State state = State::unknown;
        std::string why;  ///< why sound is unavailable, was lost, or the phrase was refused
        std::string note; ///< about what is playing, such as that the phrase is cut
    };

    using Load = std::function<SoundLibrary*(std::string& why)>;

    /// `load` returns the library, which stays loaded. `changed` is called on every status change.
    /// Both run on the listener's thread.
    Listener(Load load, std::function<void()> changed);
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Ends the sound. Waits at most a tenth of a second; a thread that a sound server holds longer
    /// is detached, and `changed` is not called any more.
    ~Listener();

    void look();          ///< looks for a sound device
    void listen(bool on); ///< switches listening on or off
    void setPhrase(const std::string& path);
    void setLevel(Level level);
    void setIR(const std::optional<Samples>& ir); ///< none: silence, but listening stays on or off

    Status status() const;

private:
    class Worker;

    void run();

    std::shared_ptr<Worker> worker_;       ///< shared with its thread
    std::optional<BackgroundWork> thread_; ///< from the first call on
};

} // namespace cabslot
