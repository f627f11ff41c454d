// The CRC of a frame: polynomial 0x1021, initial value 0, not reflected, final XOR 0xFFFF (known as
// CRC-16/GSM; the nine ASCII digits 1 to 9 give 0xCE3C).
#pragma once

#include <array>
#include <cstdint>

namespace cabslot {

/// The CRC contribution of each value of the top byte, most significant bit first.
extern const std::array<std::uint16_t, 256> ccitt_table;

/// The CRC of `count` bytes; 0xFFFF when `count` is 0 or negative.
std::uint16_t crc16_Count(const std::uint8_t* data, std::int32_t count);

} // namespace cabslot
