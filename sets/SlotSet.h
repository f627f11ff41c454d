// A set: what the four slots hold, as one value. Its file is described in docs/sets.md.
#pragma once

#include "base/Pedal.h"
#include "irfile/IR.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

class SlotMemory;

/// For each slot its IR, of which only the low 24 bits of each point count. An empty source is that
/// of a cleared slot. No IR: the set says nothing about the slot.
using SlotSet = std::array<std::optional<IR>, slotCount>;

/// What the pedal's slots hold as far as this computer knows it, for the names in the pedal.
SlotSet rememberedSet(SlotMemory& memory, const std::array<std::string, slotCount>& names);

/// A file of a set's IR, which the conversion passes bit for bit: 44.1 kHz, mono, 24 bits.
struct ExportedIR {
    std::uint32_t slot = 0; ///< 1 to 4
    std::string file;       ///< its name, without a folder; unlike the others' in any case
    bool keepsName = false; ///< loaded again, the file gives the slot the same name
    std::vector<std::uint8_t> wav;
};

/// The files of all slots that the set knows.
std::vector<ExportedIR> exported(const SlotSet& set);

} // namespace cabslot
