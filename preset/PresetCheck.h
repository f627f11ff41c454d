// Reads a preset file and checks it.
#pragma once

#include "preset/PresetImage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// How reading or saving a preset file ended. The missing numbers are not used.
enum PresetError : std::int32_t {
    presetGood = 0,
    presetUnreadable = 1,     ///< the file cannot be read
    presetWrongLength = 2,    ///< it is not exactly as long as an image
    presetWrongDevice = 3,    ///< its `DeviceID` is not 1
    presetWrongCheckSum = 6,  ///< its `CheckSum` is not the sum of its data area
    presetNotSaved = 8,       ///< writing failed
    presetUnknownVersion = 9, ///< its `PresetVersion` is newer than any known
};

struct PresetFinding {
    PresetError error = presetGood; ///< the first failed check
    std::string whyUnreadable;      ///< presetUnreadable: why, in words
    std::size_t length = 0;         ///< bytes of the file, or presetSize + 1 if it is longer
    PresetBuffUnion image;          ///< the file, unless it is unreadable or of the wrong length
};

/// Reads the file and checks, in this order: that it can be read, its length, its device, its
/// checksum, its version. Reads at most one byte more than an image holds, only from regular files,
/// and never blocks on a pipe.
PresetFinding examinePreset(const std::string& path);

/// The same for a file in memory: all of it, or its first presetSize + 1 bytes.
PresetFinding examinePresetBytes(std::span<const std::uint8_t> bytes);

/// The result and what would be correct, as text to print after the file's path and a colon;
/// "good" if nothing is wrong.
std::string presetVerdict(const PresetFinding& found);

} // namespace cabslot
