// What the pedal is, for both sides of the protocol and for the front ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace cabslot {

// On USB.
inline constexpr std::uint16_t pedalVendor = 0x0483;
inline constexpr std::uint16_t pedalProduct = 0x5703;
inline constexpr std::uint16_t pedalRelease = 0x00C8; ///< bcdDevice; only this one is used

/// The user slots. People count them from 1, code from 0.
inline constexpr std::size_t slotCount = 4;

inline constexpr std::size_t slotNameSize = 16; ///< bytes of a slot's name, as the pedal tells it
inline constexpr std::size_t sentNameSize = 15; ///< bytes of it that a host can set

/// Samples of an IR, 24 bits at 44.1 kHz.
inline constexpr std::size_t irPointCount = 1024;

inline constexpr const char* slotNamePrefix = "User ";

/// What slot `number`, 1 to slotCount, is called, and the name that a cleared slot gets.
inline std::string defaultSlotName(std::size_t number) {
    return slotNamePrefix + std::to_string(number);
}

} // namespace cabslot
