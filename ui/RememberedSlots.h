// What was loaded into the slots of one pedal from this computer, in this run or an earlier one.
// Main thread.
#pragma once

#include "memory/SlotMemory.h"
#include "sets/SlotSet.h"

#include <optional>
#include <string>
#include <vector>

namespace cabslot {

class RememberedSlots {
public:
    /// `pedal` is the --pedal choice; if it is empty, nothing is remembered. What cannot be written
    /// or read is reported on standard error.
    explicit RememberedSlots(const std::string& pedal);

    void remember(std::uint32_t slot, const SlotRecord& record);

    /// What slot 1 to 4 most likely holds: the protocol cannot query its content, but the slot has
    /// the name that it was loaded with.
    std::optional<SlotRecord> recall(std::uint32_t slot);

    /// The same of all slots, as a set.
    SlotSet set();

    /// What slot 1 to 4 held before, if that was loaded from here: what an undo loads.
    std::optional<SlotRecord> undoTarget(std::uint32_t slot);

    /// What slot 1 to 4 has held, newest first.
    std::vector<SlotRecord> history(std::uint32_t slot);

private:
    std::optional<SlotMemory> memory_;
};

} // namespace cabslot
