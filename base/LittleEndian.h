// Little-endian integers, the byte order of every file that Cabslot reads or writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace cabslot {

/// Reads an unsigned integer from `bytes` (none to four, lowest first). Missing bytes count as 0.
template<std::size_t size>
constexpr std::uint32_t littleEndian(std::span<const std::uint8_t, size> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        value = value << 8 | bytes[i - 1];
    return value;
}

/// Writes `value` into `bytes` (none to four), lowest byte first.
constexpr void putLittleEndian(std::span<std::uint8_t> bytes, std::uint32_t value) {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value);
        value >>= 8;
    }
}

} // namespace cabslot
