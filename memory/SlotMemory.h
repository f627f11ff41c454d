// What was loaded into the pedal's slots from this computer, kept in the user's state folder.
//
// A front end remembers after each confirmed load or clear, and recalls when the pedal has sent its
// names: a slot whose name is the remembered one most likely still holds the remembered IR.
//
// Each slot has a file of its own, replaced in one step and readable by its owner alone, so that
// two programs can write at once: the later one wins, and nobody reads a mixture. Main thread.
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
    std::string name;                                ///< UTF-8, without the blanks at its end
    std::string source; ///< absolute path of the loaded file; empty after a clear
    std::chrono::sys_seconds time{};
};

/// The record of the upload that was just confirmed: block and name are what was sent to `slot` (1
/// to 4), the time is now. `file` may be relative; empty stands for a clear.
SlotRecord recordOfUpload(std::uint32_t slot, const std::string& file);

class SlotMemory {
public:
    using Complain = std::function<void(const std::string& line)>;

    /// The memory of one pedal, named as --pedal takes it: simulated pedals have memories of their
    /// own. `complain` gets a line when something cannot be kept or read; nothing else fails then.
    SlotMemory(const std::string& pedal, Complain complain);

    /// Keeps `record` as what slot 1 to 4 holds.
    void remember(std::uint32_t slot, const SlotRecord& record);

    /// What was last remembered of slot 1 to 4, if `nameFromPedal` is its name. A damaged file
    /// counts as none and is told once.
    std::optional<SlotRecord> recall(std::uint32_t slot, const std::string& nameFromPedal);

private:
    std::string recordPathOf(std::uint32_t slot) const;

    std::string pedal_;
    std::string folder_; ///< empty: the user has no state folder, and nothing is kept
    Complain complain_;
    std::array<bool, slotCount> damageTold_{};
};

} // namespace cabslot
