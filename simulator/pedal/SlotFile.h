// The content of one slot of the pedal, and its file.
//
//   offset  size  content of a slot file
//   0       4096  the block: 1024 little-endian 32-bit words, the sample in the low 24 bits
//   4096    16    the name
//   4112    1     1: a factory IR, 0: not
//
// The block comes first so that it is easy to compare with a block written elsewhere.
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
    std::array<std::uint8_t, slotNameSize> name{};   ///< as the pedal sends it, with padding
    bool factory = true;
};

/// The name for display: without the padding, unprintable bytes as '.'.
std::string shownName(const PedalSlot& slot);

/// Reads a slot file. False, with the reason in `why` and `slot` unchanged, if it cannot be read or
/// does not have a slot file's size.
bool readSlotFile(const std::filesystem::path& path, PedalSlot& slot, std::string& why);

/// Replaces the slot file atomically: readers see the old content or the new one. False, with the
/// reason in `why`, on failure; the old file is then unchanged and nothing else is left in the
/// folder.
bool writeSlotFile(const std::filesystem::path& path, const PedalSlot& slot, std::string& why);

} // namespace cabslot::simulator
