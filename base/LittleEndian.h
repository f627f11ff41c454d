// Little-endian integers, the byte order of every file that is read or written here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cabslot {

/// The unsigned integer that `bytes` (none to four, lowest first) spell. Bytes that are not there
/// count as 0.
template<std::size_t size>
constexpr std::uint32_t littleEndian(std::span<const std::uint8_t, size> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        value = value << 8 | bytes[i - 1];
    return value;
}

/// Spells `value` into `bytes` (none to four, lowest first).
constexpr void putLittleEndian(std::span<std::uint8_t> bytes, std::uint32_t value) {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value);
        value >>= 8;
    }
}

} // namespace cabslot
