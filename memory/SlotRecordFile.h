// The file format of one slot's record. All integers are little-endian.
//
//   8 bytes  "cabslot2"
//   8        time, in seconds since 1970
//   4096     the block, 1024 words of 4 bytes
//   text     the pedal; a text is 4 bytes of length, then its bytes
//   15       the name field
//   1        flags: 1 confirmed, 2 factory
//   2 texts  source, replaced
//   4        number of findings, each of 2 texts: its name, its sentence
//   8        FNV-1a, 64 bits, of all bytes before
//
// Earlier versions wrote "cabslot1" and after the pedal only two texts, name and source. Such a
// file is read as a confirmed record without findings.
#pragma once

#include "memory/SlotRecord.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace cabslot {

inline constexpr std::uint32_t longestRecordFile = 64 * 1024; ///< bytes; more is never read

std::vector<std::uint8_t> recordFile(std::string_view pedal, const SlotRecord& record);

/// The record in `file`, or nothing if any byte differs from what recordFile(), of this version or
/// an earlier one, writes for `pedal`.
std::optional<SlotRecord> readRecordFile(std::span<const std::uint8_t> file,
                                         std::string_view pedal);

} // namespace cabslot
