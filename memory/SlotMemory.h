// Remembers what was loaded into the pedal's slots from this computer, in the user's state folder:
// the last twenty contents of each slot.
//
// A front end calls remember() after each load or clear that was sent, and recall() when the pedal
// has sent its names: a slot whose name matches the remembered one most likely still holds that IR.
// history() lists the contents, and undoTarget() is what an undo loads.
//
// Loading a content that is remembered already moves it to the front, as the newest: two contents
// that take turns do not displace the others.
//
// Each content has its own file, readable only by its owner, which is never changed: several
// programs may write at once, and a damaged file costs only that content. Main thread.
#pragma once

#include "base/Pedal.h"
#include "memory/EntryFiles.h"
#include "memory/SlotRecord.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr std::size_t contentsKept = 20; ///< for each slot

/// Where the contents are stored; empty: the user has no state folder.
std::string memoryFolder();

class SlotMemory {
public:
    using Complain = std::function<void(const std::string& line)>;

    /// The memory of one pedal, named as in --pedal: simulated pedals have their own. `complain`
    /// gets a line if something cannot be written or read; this is the only effect of a failure.
    SlotMemory(const std::string& pedal, Complain complain);

    /// Stores `record` as the newest content of slot 1 to 4, confirmed or not.
    void remember(std::uint32_t slot, const SlotRecord& record);

    /// The content that slot 1 to 4 most likely has if the pedal calls it `nameFromPedal`: the
    /// newest one, if it has that name. An unconfirmed one with another name did not reach the
    /// pedal, so the one before it counts.
    std::optional<SlotRecord> recall(std::uint32_t slot, const std::string& nameFromPedal);

    /// The contents of slot 1 to 4, newest first. Damaged files are left out and reported once.
    std::vector<SlotRecord> history(std::uint32_t slot);

    /// What the newest content of slot 1 to 4 replaced. Nothing if that was loaded elsewhere, or if
    /// `nameFromPedal` shows that the slot was loaded elsewhere since. Loaded and remembered, it is
    /// the newest content itself, so that the next undo reverts the first.
    std::optional<SlotRecord> undoTarget(std::uint32_t slot, const std::string& nameFromPedal);

private:
    std::string stemOf(std::uint32_t slot) const;
    std::optional<SlotRecord> read(const EntryFile& file) const;
    std::optional<SlotRecord> readOrReport(std::uint32_t slot, const EntryFile& file);
    std::optional<SlotRecord> firstNamed(std::uint32_t slot, std::span<const EntryFile> files,
                                         const std::string& name);
    std::string write(std::uint32_t slot, const SlotRecord& record,
                      std::span<const EntryFile> existing) const;

    std::string pedal_;
    std::string folder_; ///< empty: there is no state folder, so nothing is stored
    Complain complain_;
    std::array<bool, slotCount> damageReported_{};
};

} // namespace cabslot
