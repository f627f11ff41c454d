// What was loaded into a slot, when, and what is known about it.
#pragma once

#include "analysis/Findings.h"
#include "irfile/IR.h"

#include <chrono>
#include <string>
#include <vector>

namespace cabslot {

/// One content of a slot: a load or a clear from this computer.
struct SlotRecord {
    IR ir{};                         ///< as sent; `source` is an absolute path, empty after a clear
    std::vector<Finding> findings{}; ///< about the block and the file that it came from
    bool confirmed = true;           ///< false: the pedal did not confirm it in time
    std::string replaced{}; ///< the slot's name in the pedal before, without trailing blanks
    std::chrono::sys_seconds time{};

    bool isClear() const { return ir.source.empty(); }
};

/// The record of an upload that has just ended: the time is now, and the source becomes absolute.
/// `replaced` is the slot's name in the pedal before it; undo needs it.
SlotRecord recordOf(IR sent, std::string replaced);

/// The pedal would sound and show the same: block, name and factory flag are equal.
bool isSameContent(const IR& one, const IR& other);

} // namespace cabslot
