// What a pedal has stored after a stream, by the rules of docs/protocol.md alone: a second opinion
// on the simulated pedal.
#pragma once

#include "fuzz/Fuzzing.h"
#include "simulator/pedal/PedalStore.h"

#include <array>
#include <cstddef>

namespace cabslot::fuzz {

struct StoredImports {
    std::size_t count = 0; ///< finished imports, into whichever slot
    /// The payloads of each slot's last seven frames; none: nothing was imported into it.
    std::array<std::vector<Bytes>, slotCount> slots;
};

/// Seven import frames on end, steps 0 to 6, of one slot and one flag, each of the right size. Any
/// other import frame ends the import that is going on; a step 0 begins one.
StoredImports importsIn(View stream);

/// The slot holds what these seven payloads carry.
bool holds(const simulator::PedalSlot& slot, const std::vector<Bytes>& payloads);

} // namespace cabslot::fuzz
