// Byte order of every integer in the files that are read here.
#pragma once

#include <cstdint>
#include <span>

namespace cabslot {

/// The unsigned integer that `bytes` (none to four, lowest first) spell. Bytes that are not there
/// count as 0.
constexpr std::uint32_t littleEndian(std::span<const std::uint8_t> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        value = value << 8 | bytes[i - 1];
    return value;
}

} // namespace cabslot
