// FNV-1a: detects accidental damage and serves as a key for equal contents. It does not protect
// against deliberate collisions.
#pragma once

#include <cstdint>
#include <span>

namespace cabslot {

constexpr std::uint64_t fnv1a(std::span<const std::uint8_t> bytes) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const std::uint8_t byte : bytes)
        hash = (hash ^ byte) * 0x100000001B3;
    return hash;
}

} // namespace cabslot
