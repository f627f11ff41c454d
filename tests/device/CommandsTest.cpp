// The handlers of received frames, the frame builders and the scheduler.
#include "tests/support/FakePedal.h"

#include "device/DeviceCommands.h"
#include "device/DeviceObject.h"
#include "device/SendScheduler.h"

#include <string>

namespace cabslot::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

class TestObject final : public DeviceObject {};

class Commands : public DeviceTest {
protected:
    Commands() {
        object = &events;
        events.addObserver([this] { seen.push_back(events.KVOValue()); });
    }

    static Bytes allData(std::uint8_t flag, const std::string& names) {
        Bytes frame(5 + 78, 0xEE);
        frame[4] = 0xF7;
        frame[5 + 2] = flag;
        std::copy(names.begin(), names.end(), frame.begin() + 5 + 14);
        return frame;
    }

    /// Runs ticks and returns the frames that left, one entry a tick.
    std::vector<Bytes> tick(int count) {
        std::vector<Bytes> frames;
        for (int i = 0; i < count; ++i) {
            device->reports.clear();
            runSendScheduler();
            frames.push_back(device->stream());
        }
        return frames;
    }

    TestObject events;
    std::vector<std::int64_t> seen;
};

TEST_F(Commands, AllDataFillsNamesAndFlagsThenRaisesTheEvent) {
    const std::string names = "Cab             "
                              "0123456789abcdef"
                              "User 3          "
                              "last            ";
    CMD_Callback(allData('1', names).data());
    EXPECT_EQ(seen, std::vector<std::int64_t>{0});
    ASSERT_EQ(IRNameArr.count(), 4U);
    EXPECT_EQ(IRNameArr.at(0), "Cab             ");
    EXPECT_EQ(IRNameArr.at(1), "0123456789abcdef");
    EXPECT_EQ(IRNameArr.at(3), "last            ");
    EXPECT_EQ(isInternalIRArray[3], 1);
    EXPECT_EQ(isInternalIRArray2.at(3), "1");

    // A later one replaces; code 0 as a flag is a one-character text of code 0.
    CMD_Callback(allData(0, std::string(64, 'x')).data());
    EXPECT_EQ(IRNameArr.count(), 4U);
    EXPECT_EQ(IRNameArr.at(2), std::string(16, 'x'));
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(isInternalIRArray[i], 0);
        EXPECT_EQ(isInternalIRArray2.at(i), std::string(1, '\0'));
    }
    EXPECT_EQ(seen.size(), 2U) << "an unchanged event value is told again";
}

TEST_F(Commands, NamesOfAnyBytesBecomeText) {
    std::string names(64, ' ');
    names[0] = 'A';
    names[1] = '\0'; // shows nothing
    names[2] = 'B';
    names[3] = '\xE9'; // the character of code E9
    names[4] = '\xFF';
    CMD_Callback(allData(1, names).data());
    EXPECT_EQ(IRNameArr.at(0), "AB\u00E9\u00FF" + std::string(11, ' '));
}

TEST_F(Commands, ConfirmationAndUnknownCommands) {
    Bytes frame(8, 0);
    for (const std::uint8_t ignored : Bytes{0x00, 0xE9, 0xEF, 0xF6, 0xF9, 0xFF}) {
        CheckMCUInportIR_Finish = 1;
        frame[4] = ignored;
        CMD_Callback(frame.data());
        EXPECT_EQ(CheckMCUInportIR_Finish, 1U);
    }
    frame[4] = 0xF8;
    CMD_Callback(frame.data());
    EXPECT_EQ(CheckMCUInportIR_Finish, 0U);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(IRNameArr.count(), 0U);
}

TEST_F(Commands, TheFirstTwoTicksOpenAndTheRestAreSilent) {
    const auto frames = tick(8);
    EXPECT_EQ(frames[0], (Bytes{0xAA, 0x55, 0, 0, 0xFF, 0xFF}));
    EXPECT_EQ(frames[1], (Bytes{0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E}));
    for (std::size_t i = 2; i < frames.size(); ++i)
        EXPECT_TRUE(frames[i].empty()) << "tick " << i + 1;
}

TEST_F(Commands, TheSchedulerIsNotReentered) {
    IsRecDataEnd = 1;
    EXPECT_TRUE(tick(1)[0].empty());
    EXPECT_EQ(SendStep, 1000);
}

// The 55 reports of one upload, byte for byte, put together here from the layout alone.
TEST_F(Commands, AnUploadIsSevenFramesIn55Reports) {
    tick(2);
    const std::string name = "Cab       ";
    std::copy(name.begin(), name.end(), SendFileName.begin());
    for (std::size_t i = 11; i < 15; ++i)
        SendFileName[i] = ' ';
    for (std::uint32_t k = 0; k < 1024; ++k)
        irdatabuff[k] = 0xFF000000U | (k * 8191U & 0xFFFFFF); // the top byte must not be sent
    irdatabuff[3] = 0xABCDEF;
    irdatabuff[515] = 0x123456;
    SendisInternalIR = 1;
    IR_InportNumber = 0x302; // the low byte is sent
    isInportIR = 1;

    device->reports.clear();
    for (int i = 0; i < 14; ++i)
        runSendScheduler();

    std::vector<Bytes> expected = {makeFrame(
        {0xE9, 0, 2, 1, 'C', 'a', 'b', ' ', ' ', ' ', ' ', ' ', ' ', ' ', 0, ' ', ' ', ' ', ' '})};
    for (std::uint8_t uploadStep = 1; uploadStep <= 6; ++uploadStep) {
        Bytes body = {0xE9, uploadStep, 2, 1};
        const std::size_t first = uploadStep <= 3 ? 0 : 512;
        const std::size_t byteOfSample = 2U - (uploadStep - 1U) % 3U; // high plane first
        for (std::size_t k = first; k < first + 512; ++k)
            body.push_back(static_cast<std::uint8_t>(irdatabuff[k] >> (8 * byteOfSample)));
        expected.push_back(makeFrame(body));
    }
    std::vector<Bytes> reports;
    for (const Bytes& frame : expected) {
        for (std::size_t at = 0; at < frame.size(); at += 63)
            reports.emplace_back(frame.begin() + static_cast<std::ptrdiff_t>(at),
                                 frame.begin() +
                                     static_cast<std::ptrdiff_t>(std::min(at + 63, frame.size())));
    }
    ASSERT_EQ(reports.size(), 55U);
    ASSERT_EQ(device->reports.size(), 55U);
    for (std::size_t i = 0; i < reports.size(); ++i) {
        const HIDReport& sent = device->reports[i];
        ASSERT_EQ(sent[0], reports[i].size()) << "report " << i;
        EXPECT_TRUE(std::equal(reports[i].begin(), reports[i].end(), sent.begin() + 1))
            << "report " << i;
    }
    EXPECT_EQ(expected[1][9 + 3 - 1], 0xAB) << "sample 3, high byte, at payload offset 6";
    EXPECT_EQ(expected[6][9 + 3 - 1], 0x56) << "sample 515, low byte";
    EXPECT_EQ(isInportIR, 0);
    EXPECT_EQ(step, 0U);
    EXPECT_TRUE(tick(4)[3].empty());
}

TEST_F(Commands, AnUploadLeavesOnEverySecondTick) {
    tick(2);
    isInportIR = 1;
    const auto frames = tick(14);
    for (std::size_t i = 0; i < frames.size(); ++i)
        EXPECT_EQ(frames[i].empty(), i % 2 == 1) << "tick " << i;
    EXPECT_EQ(isInportIR, 0);
}

TEST_F(Commands, AnUploadToALostPedalRunsToItsEndAndRaisesTheEventOnce) {
    tick(2);
    HID_Device = nullptr;
    isDeviceConnent = 0;
    isInportIR = 1;
    tick(14);
    EXPECT_EQ(isInportIR, 0);
    EXPECT_EQ(step, 0U);
    // The name frame is one partial report; the others fail at their first, full one.
    EXPECT_EQ(seen, std::vector<std::int64_t>{1});
}

TEST_F(Commands, AStepAboveSixAppendsNothingAndStays) {
    tick(2);
    step = 7;
    isInportIR = 1;
    EXPECT_EQ(tick(1)[0], makeFrame({0xE9, 7, 0, 0}));
    EXPECT_EQ(step, 7U);
    EXPECT_EQ(isInportIR, 1);
    step = 0xFFFFFFFF;
    tick(2);
    EXPECT_EQ(step, 0xFFFFFFFF);
}

TEST_F(Commands, TheResetBuilderSendsOnRequestOnly) {
    RESET_SendData();
    EXPECT_EQ(datelen, 0);
    iSReset = 1;
    RESET_SendData();
    EXPECT_EQ(datelen, 1);
    EXPECT_EQ(iSReset, 0);
    iSReset = 2;
    RESET_SendData();
    EXPECT_EQ(iSReset, 2) << "no request, so left alone";
    iSReset = 1;
    RESET_SendData();
    EXPECT_EQ(DataBuff[2], 1);
    EXPECT_EQ(DataBuff[3], 0);
}

} // namespace
} // namespace cabslot::testing
