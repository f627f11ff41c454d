// What one slot of the pedal holds, and the file it is kept in.
//
//   offset  size  content of a slot file
//   0       4096  the block: 1024 little-endian 32-bit words, the sample in the low 24 bits
//   4096    16    the name
//   4112    1     1: a factory IR, 0: not
//
// The block comes first so that it can be compared, byte for byte, with a block written elsewhere.
#pragma once

#include "base/Pedal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace cabslot::simulator {

inline constexpr std::size_t blockFileBytes = 4 * irPointCount;
inline constexpr std::size_t slotFileBytes = blockFileBytes + slotNameSize + 1;

struct PedalSlot {
    std::array<std::uint32_t, irPointCount> block{}; ///< 24-bit samples, the top byte is 0
    std::array<std::uint8_t, slotNameSize> name{};   ///< as the pedal sends it, padding included
    bool factory = true;
};

/// The name as people read it: without the padding, unprintable bytes as '.'.
std::string shownName(const PedalSlot& slot);

/// Reads a slot file. False, with the reason in `why` and `slot` untouched, when it cannot be read
/// or is no slot file by its size.
bool readSlotFile(const std::filesystem::path& path, PedalSlot& slot, std::string& why);

/// Replaces the slot file in one step: whoever reads it finds the old content or the new one.
/// False, with the reason in `why`, when that cannot be done; the old file is then as it was and
/// nothing else is left in the folder.
bool writeSlotFile(const std::filesystem::path& path, const PedalSlot& slot, std::string& why);

} // namespace cabslot::simulator
