// One program at a time for each pedal: the reports of two would mix into frames that the pedal
// refuses, and each would read the other's replies. Each system has its own source file for this.
//
// The lock is advisory and the kernel's own: it ends with the process, even after a crash. Any
// thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cabslot {

/// The program that uses a pedal.
struct LockHolder {
    std::string program{}; ///< such as "cabslotctl"; empty: not known
    std::int64_t pid = 0;  ///< 0: not known
};

/// Held until it is destroyed.
class PedalLock {
public:
    PedalLock() = default;
    PedalLock(const PedalLock&) = delete;
    PedalLock& operator=(const PedalLock&) = delete;
    virtual ~PedalLock() = default;
};

/// At most one of the two is set. Neither is set if there is nothing to lock at that place, or no
/// permission: opening the pedal then shows why.
struct LockAttempt {
    std::unique_ptr<PedalLock> lock{};
    std::optional<LockHolder> holder{}; ///< who has it instead; also this process itself
};

/// Tries to lock the pedal at `place`: its device node, its socket, or the folder with its slots.
/// Does not wait.
LockAttempt lockPedal(const std::string& place);

/// Who has the lock of the pedal at `place`; does not lock it.
std::optional<LockHolder> holderOf(const std::string& place);

/// Why a pedal cannot be used now, and what to do.
std::string inUseText(const std::string& place, const LockHolder& holder);

/// Called on the device thread, before any pedal was announced, while another program has the only
/// one. Pauses, then returns whether to try again.
using WhileInUse = std::function<bool(const LockHolder& holder)>;

} // namespace cabslot
