// The image of a preset, which is also its file, byte for byte. All integers are little-endian.
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

/// An unsigned 32-bit field, whose bytes stand lowest first on every processor.
struct LittleEndian32 {
    std::array<std::uint8_t, 4> bytes;

    operator std::uint32_t() const { return littleEndian(std::span(bytes)); }
    LittleEndian32& operator=(std::uint32_t value) {
        putLittleEndian(bytes, value);
        return *this;
    }
};

/// The image as a record, without gaps.
struct PresetRecord {
    LittleEndian32 FileSize;                            ///< 2048; never checked
    LittleEndian32 DeviceID;                            ///< the kind of pedal
    LittleEndian32 PresetVersion;                       ///< the layout's version
    std::array<std::uint8_t, 496> Reserve;              ///< kept as it is, never checked
    LittleEndian32 CheckSum;                            ///< the sum of the data area's bytes
    std::array<std::uint8_t, presetDataSize> DataStart; ///< the data area
};
static_assert(sizeof(PresetRecord) == presetSize);

/// An image, all zero when it is made. Both views are bytes throughout, and the compilers that this
/// builds with define that one view shows what was written through the other.
union PresetBuffUnion {
    std::array<std::uint8_t, presetSize> Buff_A{}; ///< as an array of bytes
    PresetRecord buff_S;                           ///< as a record ("structure")

    /// The `CheckSum` that is right for the data area as it stands.
    std::uint32_t dataSum() const;

    /// Writes size, device, version and checksum as a file must have them.
    void stamp();
};

/// Brings a read image to the newest layout. One of an unknown version is not copied: a later
/// version's conversion belongs here.
void ChangeData(const PresetBuffUnion& source, PresetBuffUnion& destination);

} // namespace cabslot
