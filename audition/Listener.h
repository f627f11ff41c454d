// Listening to one IR after the other, from a window's point of view: every call returns at once.
// What waits (loading the module, the sound server, rendering) is done by a thread of its own,
// which starts with the first call.
#pragma once

#include "audition/Sound.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cabslot {

class Listener {
public:
    enum class State {
        unknown,     ///< nobody has looked for a sound device yet
        ready,       ///< there is one
        unavailable, ///< there is none; `why` says so
        playing,     ///< switched on; silent while there is no IR
    };
    struct Status {
        State state = State::unknown;
        std::string why;  ///< sound is unavailable, was lost, or the phrase cannot be used
        std::string note; ///< of what is playing, such as that the phrase is cut
    };

    using Load = std::function<SoundLibrary*(std::string& why)>;

    /// `load` gives the library, which stays. `changed` is told of every change of the status. Both
    /// are called on the listener's thread.
    Listener(Load load, std::function<void()> changed);
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Ends the sound. Waits a tenth of a second at most; a thread that a sound server holds longer
    /// is left to itself, and `changed` is not called any more.
    ~Listener();

    void look();          ///< finds out whether there is a sound device
    void listen(bool on); ///< the switch
    void setPhrase(const std::string& path);
    void setLevel(Level level);
    void setIR(const std::optional<Samples>& ir); ///< none: silence, but the switch stays as it is

    Status status() const;

private:
    class Worker;

    void run();

    std::shared_ptr<Worker> worker_; ///< its thread shares it
    bool isRunning_ = false;
};

} // namespace cabslot
