// One preset in memory: read from a file, saved to a file, its data area copied in and out.
//
// An object holds its image itself and shares nothing; use it from one thread at a time.
#pragma once

#include "preset/PresetCheck.h"
#include "preset/PresetImage.h"

#include <cstdint>
#include <string>

namespace cabslot {

class QNPresetFile {
public:
    /// Reads and checks the file as examinePreset() does and writes the PresetError to `Errormsg`,
    /// which must not be null. False unless that is presetGood; the image is then as before.
    bool ReadFileToPresetPath(const std::string& path, std::int32_t* Errormsg);

    /// Stamps device, size, version and checksum into the image and replaces the file at `path` by
    /// it, or makes it; see replaceFile() for what becomes of the old file. When that fails,
    /// returns false, writes presetNotSaved to `Errormsg`, and whyNotSaved() has the reason; the
    /// file is as before, the image keeps the stamps. A success writes no `Errormsg`.
    bool SavePresetToFilePath(const std::string& path, std::int32_t* Errormsg);

    /// Copies the first `Len` bytes of the data area out. More than 1536: false, copies nothing.
    bool ReadPresetBufferPresetData(std::uint8_t* destination, std::uint32_t Len) const;

    /// Copies `Len` bytes in, to the start of the data area. More than 1536: false, copies nothing.
    /// Leaves the checksum alone: saving brings it up to date.
    bool WritePresetBufferPresetData(const std::uint8_t* source, std::uint32_t Len);

    /// Why the last read failed, in words to follow "PATH: ".
    const std::string& whyNotRead() const { return whyNotRead_; }

    /// Why the last save failed, in words to follow "PATH cannot be written: ".
    const std::string& whyNotSaved() const { return whyNotSaved_; }

    /// The image that is held ("new": in the newest layout).
    PresetBuffUnion NewPreset;

private:
    std::string whyNotRead_;
    std::string whyNotSaved_;
};

} // namespace cabslot
