// The numbers of slots as arguments: 1 to 4.
#pragma once

#include "arguments/Readers.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cabslot {

/// "1 to 4"
std::string slotNumbers();

/// A check: empty for a slot's number, else what is wrong.
std::string whyNoSlot(const std::string& slot);

/// The number in a text that whyNoSlot() accepts.
std::uint32_t slotOf(const std::string& slot);

Reader intoSlots(std::vector<std::uint32_t>& slots); ///< appends

/// What is wrong if a slot is named twice; else empty.
std::string whyRepeated(std::vector<std::uint32_t> slots);

} // namespace cabslot
