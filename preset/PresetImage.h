// The image of a preset, which is also its file, byte for byte. All integers are little-endian.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace cabslot {

inline constexpr std::size_t presetSize = 2048;     ///< bytes of an image
inline constexpr std::size_t presetDataSize = 1536; ///< bytes of its data area

inline constexpr std::uint32_t presetDevice = 1;        ///< the only `DeviceID`
inline constexpr std::uint32_t presetLayoutVersion = 0; ///< the newest `PresetVersion`

/// Where a field stands in the image, in bytes.
struct PresetField {
    std::size_t offset;
    std::size_t size;
};

/// The image as a record ("structure"). The first byte behind a field is the next field's.
namespace buff_S {
inline constexpr PresetField FileSize{0, 4};      ///< the image's size; never checked
inline constexpr PresetField DeviceID{4, 4};      ///< the kind of pedal
inline constexpr PresetField PresetVersion{8, 4}; ///< the layout's version
inline constexpr PresetField Reserve{12, 496};    ///< reserved: kept as it is, never checked
inline constexpr PresetField CheckSum{508, 4};    ///< what the data area's bytes add up to
inline constexpr PresetField DataStart{512, presetDataSize}; ///< the data area
} // namespace buff_S

/// An image, all zero when it is made.
struct PresetBuffUnion {
    std::array<std::uint8_t, presetSize> Buff_A{}; ///< the image as an array of bytes

    std::span<const std::uint8_t> bytes(PresetField field) const {
        return std::span(Buff_A).subspan(field.offset, field.size);
    }
    std::span<std::uint8_t> bytes(PresetField field) {
        return std::span(Buff_A).subspan(field.offset, field.size);
    }

    /// The value of a field of four bytes.
    std::uint32_t number(PresetField field) const;
    void setNumber(PresetField field, std::uint32_t value);

    /// The `CheckSum` that is right for the data area as it stands.
    std::uint32_t dataSum() const;
};

/// Brings a read image to the newest layout. One of an unknown version is not copied: a later
/// version's conversion belongs here. The images must not overlap.
void ChangeData(std::span<const std::uint8_t, presetSize> source,
                std::span<std::uint8_t, presetSize> destination);

} // namespace cabslot
