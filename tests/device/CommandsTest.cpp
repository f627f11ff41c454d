// The handlers for received frames, the frame builders and the scheduler.
#include "tests/support/FakePedal.h"

#include "device/DeviceCommands.h"
#include "device/SendScheduler.h"

namespace cabslot::testing {
namespace {

// Read before any test has reset the values.
// clang-format off
const std::vector<std::int64_t> valuesAtStart = {
    SendStep, deviceTrue, isInternalIRArray[0], isInternalIRArray[3], datelen, Step, vaildDataCount,
    IsRecDataEnd, iSReset, step, isInportIR, CheckMCUInportIR_Finish, IR_InportNumber,
    isDeviceConnent, HIDDeviceID_int, deviceDidTrue, isVersionTrue, deviceModel, deveiceIndex, timer,
    checkNumber, rx_buffer_count, SendisInternalIR};
// clang-format on

TEST(StartValues, AreThoseOfTheProtocol) {
    std::vector<std::int64_t> expected(valuesAtStart.size(), 0);
    std::copy_n(std::begin({1000, 1, 1, 1}), 4, expected.begin());
    EXPECT_EQ(valuesAtStart, expected);
}

class Commands : public DeviceTest {
protected:
    /// Runs one tick and returns what was sent.
    Bytes tick() {
        device->reports.clear();
        runSendScheduler();
        return device->stream();
    }
};

TEST_F(Commands, AllDataFillsNamesAndFlagsThenRaisesTheEvent) {
    std::string lastName;
    onEvent = [&] { lastName = IRNameArr.at(3) + isInternalIRArray2.at(3); };
    CMD_Callback(allDataFrame('1', "Cab             0123456789abcdef"
                                   "User 3          last            ")
                     .data());
    EXPECT_EQ(events, std::vector<std::int64_t>{0});
    EXPECT_EQ(lastName, "last            1") << "all four are stored before the event";
    EXPECT_EQ(IRNameArr.at(0), "Cab             ");
    EXPECT_EQ(IRNameArr.at(1), "0123456789abcdef");

    // A later name replaces the first; 0 bytes are left out, other bytes are character codes.
    onEvent = [] {};
    CMD_Callback(allDataFrame(0, std::string("A\0B\xE9\xFF", 5) + std::string(59, 'x')).data());
    EXPECT_EQ(IRNameArr.count(), 4U);
    EXPECT_EQ(IRNameArr.at(0), "AB\u00E9\u00FF" + std::string(11, 'x'));
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(isInternalIRArray[i], 0);
        EXPECT_EQ(isInternalIRArray2.at(i), std::string(1, '\0'));
    }
    EXPECT_EQ(events.size(), 2U) << "an unchanged value is an event, too";
    CMD_Callback(allDataFrame(2, std::string(64, 'x')).data());
    EXPECT_EQ(isInternalIRArray[3], 1);
}

TEST_F(Commands, OnlyF8Confirms) {
    Bytes frame(8, 0);
    for (const std::uint8_t command : Bytes{0x00, 0xE9, 0xEF, 0xF6, 0xF9, 0xFF, 0xF8}) {
        CheckMCUInportIR_Finish = 1;
        frame[4] = command;
        CMD_Callback(frame.data());
        EXPECT_EQ(CheckMCUInportIR_Finish, command == 0xF8 ? 0U : 1U) << int{command};
    }
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(IRNameArr.count(), 0U);
}

TEST_F(Commands, TheFirstTwoTicksOpenAndTheRestAreSilent) {
    EXPECT_EQ(tick(), openingFrame);
    EXPECT_EQ(tick(), requestFrame);
    for (const std::uint8_t command : Bytes{0xE9, 0xED, 0xE9, 0xED}) {
        EXPECT_EQ(tick(), Bytes());
        EXPECT_EQ(DataBuff[4], command) << "the idle state writes its command byte, too";
    }
    IsRecDataEnd = 1;
    EXPECT_EQ(tick(), Bytes());
    EXPECT_EQ(SendStep, 233) << "not re-entered";
}

// The 55 reports of one upload, byte for byte, built here from the layout alone.
TEST_F(Commands, AnUploadIsSevenFramesOnEverySecondTick) {
    tick();
    tick();
    const std::string name("Cab       \0    ", 15);
    std::copy(name.begin(), name.end(), SendFileName.begin());
    for (std::uint32_t k = 0; k < 1024; ++k)
        irdatabuff[k] = 0xFF000000U | (k * 8191U & 0xFFFFFF); // the top byte must not be sent
    irdatabuff[3] = 0xABCDEF;
    irdatabuff[515] = 0x123456;
    SendisInternalIR = 1;
    IR_InportNumber = 0x302; // only the low byte is sent
    isInportIR = 1;

    std::vector<Bytes> expected = {
        makeFrame(Bytes{0xE9, 0, 2, 1} + Bytes(name.begin(), name.end()))};
    for (std::uint8_t uploadStep = 1; uploadStep <= 6; ++uploadStep) {
        Bytes body = {0xE9, uploadStep, 2, 1};
        const std::size_t first = uploadStep <= 3 ? 0 : 512;
        const std::size_t byteOfSample = 2U - (uploadStep - 1U) % 3U; // high plane first
        for (std::size_t k = first; k < first + 512; ++k)
            body.push_back(static_cast<std::uint8_t>(irdatabuff[k] >> (8 * byteOfSample)));
        expected.push_back(makeFrame(body));
    }
    EXPECT_EQ(expected[1][5 + 6], 0xAB) << "sample 3 at payload offset 6";
    EXPECT_EQ(expected[6][5 + 6], 0x56) << "sample 515";

    std::size_t reports = 0;
    for (const Bytes& frame : expected) {
        EXPECT_EQ(isInportIR, 1);
        EXPECT_EQ(tick(), frame);
        for (std::size_t i = 0; i + 1 < device->reports.size(); ++i)
            EXPECT_EQ(device->reports[i][0], 63) << "full reports first";
        reports += device->reports.size();
        EXPECT_EQ(tick(), Bytes());
    }
    EXPECT_EQ(reports, 55U);
    EXPECT_EQ(isInportIR, 0);
    EXPECT_EQ(step, 0U);
    EXPECT_EQ(tick(), Bytes());
}

TEST_F(Commands, AnUploadToALostPedalRunsToItsEndAndRaisesTheEventOnce) {
    tick();
    tick();
    HID_Device = nullptr;
    isDeviceConnent = 0;
    isInportIR = 1;
    for (int i = 0; i < 14; ++i)
        tick();
    EXPECT_EQ(isInportIR, 0);
    EXPECT_EQ(step, 0U);
    // The name frame is one partial report; the others fail at their first, full one.
    EXPECT_EQ(events, std::vector<std::int64_t>{1});
}

TEST_F(Commands, AStepAboveSixAppendsNothingAndStays) {
    tick();
    tick();
    step = 7;
    isInportIR = 1;
    EXPECT_EQ(tick(), makeFrame({0xE9, 7, 0, 0}));
    EXPECT_EQ(step, 7U);
    EXPECT_EQ(isInportIR, 1);
    step = 0xFFFFFFFF;
    tick();
    tick();
    EXPECT_EQ(step, 0xFFFFFFFF);
}

} // namespace
} // namespace cabslot::testing
