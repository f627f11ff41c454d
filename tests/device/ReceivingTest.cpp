// The CRC, the ring buffer and the unpacker. The fuzz seeds compare the unpacker with an
// independent one on many more streams; these tests cover the rest.
#include "tests/support/FakePedal.h"

#include "device/Crc16.h"
#include "device/DataUnpacking.h"
#include "device/ReceiveBuffer.h"

namespace cabslot::testing {
namespace {

TEST(Crc16, MatchesPublishedValues) {
    const Bytes digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16_Count(digits.data(), 9), 0xCE3C);
    EXPECT_EQ(crc16_Count(nullptr, 0), 0xFFFF);
    EXPECT_EQ(crc16_Count(nullptr, -1), 0xFFFF);
}

class Receiving : public DeviceTest {
protected:
    static void receive(const Bytes& bytes) {
        ASSERT_EQ(putRX_buffer(bytes.data(), static_cast<std::uint32_t>(bytes.size())), 1);
    }
};

TEST_F(Receiving, TheRingBufferTakesAllOrNothing) {
    const Bytes many(10000, 7);
    receive(many);
    EXPECT_EQ(putRX_buffer(many.data(), 241), 0) << "one more than is free";
    EXPECT_EQ(putRX_buffer(many.data(), 240), 1);
}

// The handler gets no length: a short frame's missing bytes come from the previous frame.
TEST_F(Receiving, AShortAllDataFrameIsTrusted) {
    const std::string names(64, 'n');
    receive(allDataFrame('1', names));
    DUP_Unpack();
    IRNameArr.clear();
    receive(makeFrame({0xF7}));
    DUP_Unpack();
    ASSERT_EQ(IRNameArr.count(), 4U);
    EXPECT_EQ(IRNameArr.at(3), names.substr(0, 16));
    EXPECT_EQ(events, (std::vector<std::int64_t>{0, 0}));
}

} // namespace
} // namespace cabslot::testing
