// CRC-32 as in zlib, PNG and Ethernet (polynomial 0x04C11DB7, reflected, starting from and inverted
// with ones): detects accidental damage, and any language can compute it, such as Python with
// zlib.crc32().
#pragma once

#include <cstdint>
#include <span>

namespace cabslot {

/// The CRC of `bytes`, or of what gave `before` followed by them.
constexpr std::uint32_t crc32(std::span<const std::uint8_t> bytes, std::uint32_t before = 0) {
    constexpr std::uint32_t reflectedPolynomial = 0xEDB88320;
    std::uint32_t crc = ~before;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ ((crc & 1) != 0 ? reflectedPolynomial : 0);
    }
    return ~crc;
}

} // namespace cabslot
