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

namespace {

/// What each byte contributes when one more byte follows it than in `table`.
constexpr Table oneByteOn(const Table& table) {
    Table on{};
    for (std::size_t i = 0; i < on.size(); ++i)
        on[i] = static_cast<std::uint16_t>((table[i] << 8) ^ ccitt_table[table[i] >> 8]);
    return on;
}

// Four bytes in one step wait for each other's result once, not four times.
constexpr Table followedBy1 = oneByteOn(ccitt_table);
constexpr Table followedBy2 = oneByteOn(followedBy1);
constexpr Table followedBy3 = oneByteOn(followedBy2);

unsigned nextFour(unsigned crc, const std::uint8_t* data) {
    return followedBy3[(crc >> 8) ^ data[0]] ^ followedBy2[(crc & 0xFF) ^ data[1]] ^
           followedBy1[data[2]] ^ ccitt_table[data[3]];
}

unsigned nextOne(unsigned crc, std::uint8_t byte) {
    return ((crc << 8) ^ ccitt_table[(crc >> 8) ^ byte]) & 0xFFFF;
}

} // namespace

std::uint16_t crc16_Count(const std::uint8_t* data, std::int32_t count) {
    unsigned crc = 0;
    for (; count >= 4; count -= 4, data += 4)
        crc = nextFour(crc, data);
    for (; count > 0; --count, ++data)
        crc = nextOne(crc, *data);
    return static_cast<std::uint16_t>(crc ^ finalXor);
}

} // namespace cabslot
