// Byte order of every integer in the files that are read here.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
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

/// The same of four bytes, in one load where the machine keeps its own integers so.
inline std::uint32_t littleEndianWord(const std::uint8_t* bytes) {
    if constexpr (std::endian::native != std::endian::little)
        return littleEndian({bytes, 4});
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

} // namespace cabslot
