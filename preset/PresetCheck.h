// Whether a file is a preset, and what was found in it.
#pragma once

#include "preset/PresetImage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// How reading or saving a preset file ended. The numbers that are missing are never given.
enum PresetError : std::int32_t {
    presetGood = 0,
    presetUnreadable = 1,     ///< the file cannot be read
    presetWrongLength = 2,    ///< it is not exactly as long as an image
    presetWrongDevice = 3,    ///< its `DeviceID` is not 1
    presetWrongCheckSum = 6,  ///< its `CheckSum` is not what its data area adds up to
    presetNotSaved = 8,       ///< writing failed
    presetUnknownVersion = 9, ///< its `PresetVersion` is newer than any that is known
};

struct PresetFinding {
    PresetError error = presetGood; ///< the first that applies, in the order of the checks
    std::string whyUnreadable;      ///< presetUnreadable: why, in words
    std::size_t length = 0;         ///< bytes of the file; presetSize + 1 stands for all above
    PresetBuffUnion image;          ///< the file, unless it is unreadable or of the wrong length
};

/// Reads the file and checks, in this order: that it can be read, its length, its device, its
/// checksum, its version. Never reads more than one byte beyond an image's length, and only
/// regular files; never waits for a pipe.
PresetFinding examinePreset(const std::string& path);

/// The same of a file that is in memory: all of it, or its first presetSize + 1 bytes.
PresetFinding examinePresetBytes(std::span<const std::uint8_t> bytes);

/// What was found and what would be right, in words to follow the file's path and a colon; "good"
/// when it is.
std::string presetVerdict(const PresetFinding& found);

} // namespace cabslot
