// Lets lengthy work find out that nobody wants its result any more.
#pragma once

#include <functional>

namespace cabslot {

/// True: stop soon. May be empty: never. Called on the thread that works.
using StopCheck = std::function<bool()>;

inline bool isStopped(const StopCheck& stop) {
    return stop && stop();
}

} // namespace cabslot
