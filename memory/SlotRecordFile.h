// The file format of one slot's record. All integers are little-endian.
//
//   8 bytes  "cabslot1"
//   8        time, in seconds since 1970
//   4096     the block, 1024 words of 4 bytes
//   3 texts  pedal, name, source: each 4 bytes of length, then its bytes
//   8        FNV-1a, 64 bits, of all bytes before
#pragma once

#include "memory/SlotMemory.h"

#include <span>
#include <string_view>
#include <vector>

namespace cabslot {

inline constexpr std::uint32_t longestRecordFile = 64 * 1024; ///< bytes; more is never read

std::vector<std::uint8_t> recordFile(std::string_view pedal, const SlotRecord& record);

/// The record in `file`, or nothing if any byte differs from what recordFile() writes for `pedal`.
std::optional<SlotRecord> readRecordFile(std::span<const std::uint8_t> file,
                                         std::string_view pedal);

} // namespace cabslot
