// Remembers what was loaded into the pedal's slots from this computer, in the user's state folder.
//
// A front end calls remember() after each confirmed load or clear, and recall() when the pedal has
// sent its names: a slot whose name matches the remembered one most likely still holds that IR.
//
// Each slot has its own file, replaced atomically and readable only by its owner, so that two
// programs can write at once: the later one wins, and nobody reads a mixture. Main thread.
#pragma once

#include "base/Pedal.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace cabslot {

/// One confirmed load or clear.
struct SlotRecord {
    std::array<std::uint32_t, irPointCount> block{}; ///< as in irdatabuff
    std::string name;                                ///< UTF-8, without trailing blanks
    std::string source; ///< absolute path of the loaded file; empty after a clear
    std::chrono::sys_seconds time{};
};

/// The record of the upload that was just confirmed: block and name as sent to `slot` (1 to 4), the
/// time is now. `file` may be relative; empty means a clear.
SlotRecord recordOfUpload(std::uint32_t slot, const std::string& file);

class SlotMemory {
public:
    using Complain = std::function<void(const std::string& line)>;

    /// The memory of one pedal, named as in --pedal: simulated pedals have their own. `complain`
    /// gets a line if something cannot be written or read; this is the only effect of a failure.
    SlotMemory(const std::string& pedal, Complain complain);

    /// Stores `record` as the content of slot 1 to 4.
    void remember(std::uint32_t slot, const SlotRecord& record);

    /// What was last remembered for slot 1 to 4, if its name is `nameFromPedal`. A damaged file
    /// counts as none and is reported once.
    std::optional<SlotRecord> recall(std::uint32_t slot, const std::string& nameFromPedal);

private:
    std::string recordPathOf(std::uint32_t slot) const;

    std::string pedal_;
    std::string folder_; ///< empty: there is no state folder, so nothing is stored
    Complain complain_;
    std::array<bool, slotCount> damageTold_{};
};

} // namespace cabslot
