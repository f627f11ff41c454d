// Facts about the pedal, shared by both sides of the protocol and the front ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace cabslot {

// USB identifiers.
inline constexpr std::uint16_t pedalVendor = 0x0483;
inline constexpr std::uint16_t pedalProduct = 0x5703;
inline constexpr std::uint16_t pedalRelease = 0x00C8; ///< bcdDevice; no other release is used

/// The user slots. Users count them from 1, code from 0.
inline constexpr std::size_t slotCount = 4;

inline constexpr std::size_t slotNameSize = 16; ///< bytes of a slot's name, as the pedal reports it
inline constexpr std::size_t sentNameSize = 15; ///< bytes of it that a host can set

/// Samples of an IR, 24 bits at 44.1 kHz.
inline constexpr std::size_t irPointCount = 1024;

inline constexpr const char* slotNamePrefix = "User ";

/// The default name of slot `number` (1 to slotCount), which a cleared slot gets.
inline std::string defaultSlotName(std::size_t number) {
    return slotNamePrefix + std::to_string(number);
}

} // namespace cabslot
