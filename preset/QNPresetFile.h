// A preset in memory: loaded from a file, saved to a file, its data area copied in and out.
//
// Each object has its own image and shares nothing; use it from one thread at a time.
#pragma once

#include "preset/PresetCheck.h"
#include "preset/PresetImage.h"

#include <cstdint>
#include <string>

namespace cabslot {

class QNPresetFile {
public:
    /// Reads and checks the file like examinePreset() and writes the PresetError to `Errormsg`,
    /// which must not be null. False unless that is presetGood; the image is then unchanged.
    bool ReadFileToPresetPath(const std::string& path, std::int32_t* Errormsg);

    /// Writes device, size, version and checksum into the image, then replaces or creates the file
    /// at `path`; see replaceFile() for what happens to the old file. On failure, returns false,
    /// sets `Errormsg` to presetNotSaved and whyNotSaved() to the reason; the file is unchanged,
    /// the image keeps the four values. On success, leaves `Errormsg` alone.
    bool SavePresetToFilePath(const std::string& path, std::int32_t* Errormsg);

    /// Copies the first `Len` bytes of the data area out. Above 1536: false, copies nothing.
    bool ReadPresetBufferPresetData(std::uint8_t* destination, std::uint32_t Len) const;

    /// Copies `Len` bytes to the start of the data area. Above 1536: false, copies nothing. Leaves
    /// the checksum alone: saving updates it.
    bool WritePresetBufferPresetData(const std::uint8_t* source, std::uint32_t Len);

    /// Why the last read failed, to print after "PATH: ".
    const std::string& whyNotRead() const { return whyNotRead_; }

    /// Why the last save failed, to print after "PATH cannot be written: ".
    const std::string& whyNotSaved() const { return whyNotSaved_; }

    /// The image ("new": in the newest layout).
    PresetBuffUnion NewPreset;

private:
    std::string whyNotRead_;
    std::string whyNotSaved_;
};

} // namespace cabslot
