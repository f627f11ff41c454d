#include "device/Crc16.h"

namespace cabslot {

namespace {

constexpr std::uint16_t polynomial = 0x1021;
constexpr std::uint16_t finalXor = 0xFFFF;

using Table = std::array<std::uint16_t, 256>;

constexpr Table makeTable() {
    Table table{};
    for (unsigned top = 0; top < table.size(); ++top) {
        unsigned remainder = top << 8;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder & 0x8000) != 0 ? (remainder << 1) ^ polynomial : remainder << 1;
        table[top] = static_cast<std::uint16_t>(remainder);
    }
    return table;
}

} // namespace

constexpr Table ccitt_table = makeTable();

std::uint16_t crc16_Count(const std::uint8_t* data, std::int32_t count) {
    unsigned crc = 0;
    for (std::int32_t i = 0; i < count; ++i)
        crc = ((crc << 8) ^ ccitt_table[(crc >> 8) ^ data[i]]) & 0xFFFF;
    return static_cast<std::uint16_t>(crc ^ finalXor);
}

} // namespace cabslot
