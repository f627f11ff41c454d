// The CRC, the ring buffer and the unpacker.
#include "tests/support/FakePedal.h"

#include "device/Crc16.h"
#include "device/DataUnpacking.h"
#include "device/DeviceObject.h"
#include "device/ReceiveBuffer.h"

#include <numeric>
#include <string>

namespace cabslot::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(Crc16, MatchesPublishedValues) {
    const std::string digits = "123456789";
    EXPECT_EQ(crc16_Count(reinterpret_cast<const std::uint8_t*>(digits.data()), 9), 0xCE3C);
    EXPECT_EQ(crc16_Count(nullptr, 0), 0xFFFF);
    EXPECT_EQ(crc16_Count(nullptr, -1), 0xFFFF);
    EXPECT_EQ(ccitt_table[3], 0x3063);
    EXPECT_EQ(ccitt_table[255], 0x1EF0);
}

class RingBuffer : public DeviceTest {};

TEST_F(RingBuffer, TakesAllOrNothingAndWraps) {
    Bytes many(10000);
    std::iota(many.begin(), many.end(), std::uint8_t{0});
    ASSERT_EQ(putRX_buffer(many.data(), 10000), 1);
    EXPECT_EQ(putRX_buffer(many.data(), 241), 0) << "one more than is free";
    EXPECT_EQ(rx_buffer_count, 10000U);
    EXPECT_EQ(putRX_buffer(many.data(), 240), 1) << "exactly what is free";
    EXPECT_EQ(rx_buffer_writep, 0U);

    Bytes out(10240);
    EXPECT_EQ(getRX_buffer(10241, out.data()), 0);
    EXPECT_EQ(getRX_buffer(10000, out.data()), 1);
    EXPECT_TRUE(std::equal(many.begin(), many.end(), out.begin()));

    // Now the reading index stands near the end: a read across it, then a write and a read.
    ASSERT_EQ(putRX_buffer(many.data() + 1, 300), 1);
    ASSERT_EQ(getRX_buffer(540, out.data()), 1);
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + 240, many.begin()));
    EXPECT_TRUE(std::equal(out.begin() + 240, out.begin() + 540, many.begin() + 1));
    EXPECT_EQ(getRX_buffer(1, out.data()), 0);
    ASSERT_EQ(putRX_buffer(many.data(), 10000), 1);
    ASSERT_EQ(putRX_buffer(many.data(), 200), 1);
    ASSERT_EQ(getRX_buffer(9900, out.data()), 1);
    ASSERT_EQ(getRX_buffer(300, out.data()), 1);
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + 100, many.begin() + 9900));
    EXPECT_TRUE(std::equal(out.begin() + 100, out.begin() + 300, many.begin()));
}

TEST_F(RingBuffer, ClearsWhole) {
    const Bytes some = {1, 2, 3};
    putRX_buffer(some.data(), 3);
    ClearRx_buffer();
    std::uint8_t out = 0;
    EXPECT_EQ(getRX_buffer(1, &out), 0);
    putRX_buffer(some.data(), 1);
    EXPECT_EQ(getRX_buffer(1, &out), 1);
    EXPECT_EQ(out, 1);
}

// Frames are seen by what they do: F8 clears CheckMCUInportIR_Finish.
class Unpacker : public DeviceTest {
protected:
    const Bytes confirmation = {0xAA, 0x55, 0x01, 0x00, 0xF8, 0xA6, 0xD8};

    void receive(const Bytes& bytes) {
        ASSERT_EQ(putRX_buffer(bytes.data(), static_cast<std::uint32_t>(bytes.size())), 1);
    }

    /// Calls of DUP_Unpack until a confirmation was handled; 0 if 30 do not do.
    int callsUntilConfirmed() {
        CheckMCUInportIR_Finish = 1;
        for (int call = 1; call <= 30; ++call) {
            DUP_Unpack();
            if (CheckMCUInportIR_Finish == 0)
                return call;
        }
        return 0;
    }
};

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

TEST_F(Unpacker, FindsTheFrameInWhatSurroundsIt) {
    const Bytes tooLong = {0xAA, 0x55, 0xFB, 0x03}; // L = 1019
    const Bytes badCrc = {0xAA, 0x55, 0x01, 0x00, 0xF8, 0xA6, 0xD9};
    struct Row {
        const char* what;
        Bytes bytes;
        int calls;
    };
    const Row rows[] = {
        {"nothing around it", confirmation, 1},
        {"one stray byte a call", Bytes{1, 2, 3, 4, 5} + confirmation, 6},
        {"a doubled first sync byte", Bytes{0xAA} + confirmation, 1},
        {"a wrong second sync byte", Bytes{0xAA, 0x54} + confirmation, 1},
        {"a length of 1019", tooLong + confirmation, 1},
        {"a bad frame before it", badCrc + confirmation, 1},
        {"an empty frame before it", Bytes{0xAA, 0x55, 0, 0, 0xFF, 0xFF} + confirmation, 1},
        {"an unknown command before it", makeFrame({0x42, 1, 2, 3}) + confirmation, 1},
        {"an empty frame with a wrong CRC", Bytes{0xAA, 0x55, 0, 0, 0xFF, 0xFE} + confirmation, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        receive(row.bytes);
        EXPECT_EQ(callsUntilConfirmed(), row.calls);
        EXPECT_EQ(rx_buffer_count, 0U);
        EXPECT_EQ(Step, unpackSync1);
    }
}

TEST_F(Unpacker, FindsAGoodFrameInsideABadOne) {
    // L = 20 swallows the confirmation and what follows; the CRC at its end is wrong.
    receive(Bytes{0xAA, 0x55, 20, 0} + confirmation + Bytes(15, 0x11));
    EXPECT_EQ(callsUntilConfirmed(), 1);

    // Two inside, with surplus behind the second: both are delivered, the second after the first.
    receive(Bytes{0xAA, 0x55, 30, 0} + makeFrame({0x42}) + confirmation + Bytes(18, 0x11));
    EXPECT_EQ(callsUntilConfirmed(), 1);
    EXPECT_EQ(rx_buffer_count, 0U);
}

TEST_F(Unpacker, WaitsForFramesThatComeByteByByte) {
    CheckMCUInportIR_Finish = 1;
    for (std::size_t i = 0; i < confirmation.size(); ++i) {
        EXPECT_EQ(CheckMCUInportIR_Finish, 1U) << "before byte " << i;
        receive({confirmation[i]});
        DUP_Unpack();
    }
    EXPECT_EQ(CheckMCUInportIR_Finish, 0U);
}

TEST_F(Unpacker, AcceptsTheLargestFrame) {
    Bytes largest(1018, 0x33);
    largest[0] = 0xF8;
    const Bytes frame = makeFrame(largest);
    ASSERT_EQ(frame.size(), 1024U);
    receive(frame + confirmation);
    EXPECT_EQ(callsUntilConfirmed(), 1);
    EXPECT_EQ(rx_buffer_count, 0U) << "both frames in one call";
}

TEST_F(Unpacker, AnEmptyFrameIsReadAsItsCrcsHighByte) {
    // L = 0: the byte at the command's place is FF, which is no command. Nothing happens.
    receive({0xAA, 0x55, 0x00, 0x00, 0xFF, 0xFF});
    EXPECT_EQ(callsUntilConfirmed(), 0);
    EXPECT_EQ(Step, unpackSync1);
    EXPECT_EQ(vaildDataCount, 0);
}

} // namespace
} // namespace cabslot::testing
