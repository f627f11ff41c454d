// A preset's image, which is also the file format, byte for byte. All integers are little-endian.
#pragma once

#include "base/LittleEndian.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace cabslot {

inline constexpr std::size_t presetSize = 2048;     ///< bytes of an image
inline constexpr std::size_t presetDataSize = 1536; ///< bytes of its data area

inline constexpr std::uint32_t presetDevice = 1;        ///< the only `DeviceID`
inline constexpr std::uint32_t presetLayoutVersion = 0; ///< the newest `PresetVersion`

/// An unsigned 32-bit field, stored lowest byte first on every processor.
struct LittleEndian32 {
    std::array<std::uint8_t, 4> bytes;

    operator std::uint32_t() const { return littleEndian(std::span(bytes)); }
    LittleEndian32& operator=(std::uint32_t value) {
        putLittleEndian(bytes, value);
        return *this;
    }
};

/// The image as a record without padding.
struct PresetRecord {
    LittleEndian32 FileSize;                            ///< 2048; never checked
    LittleEndian32 DeviceID;                            ///< the kind of pedal
    LittleEndian32 PresetVersion;                       ///< the layout's version
    std::array<std::uint8_t, 496> Reserve;              ///< kept unchanged, never checked
    LittleEndian32 CheckSum;                            ///< the sum of the data area's bytes
    std::array<std::uint8_t, presetDataSize> DataStart; ///< the data area
};
static_assert(sizeof(PresetRecord) == presetSize);

/// An image, initially all zero. Both views consist of bytes only, and the supported compilers
/// define that one view shows what was written through the other.
union PresetBuffUnion {
    std::array<std::uint8_t, presetSize> Buff_A{}; ///< as an array of bytes
    PresetRecord buff_S;                           ///< as a record ("structure")

    /// The correct `CheckSum` for the current data area.
    std::uint32_t dataSum() const;

    /// Sets size, device, version and checksum to the values that a file needs.
    void stamp();
};

/// Converts a loaded image to the newest layout. An image of an unknown version is not copied; the
/// conversion of a later version belongs here.
void ChangeData(const PresetBuffUnion& source, PresetBuffUnion& destination);

} // namespace cabslot
