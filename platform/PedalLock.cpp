#include "platform/PedalLock.h"

namespace cabslot {

std::string inUseText(const std::string& place, const LockHolder& holder) {
    std::string who = holder.program.empty() ? "another program" : holder.program;
    if (holder.pid != 0)
        who += " (pid " + std::to_string(holder.pid) + ")";
    return "the pedal at " + place + " is in use by " + who +
           ": close that program, or wait until it is done";
}

} // namespace cabslot
