// Uploads to one slot without a device thread or clock: each wait runs scheduler ticks instead.
// Refused files and clearing are tested with the window and the programs.
#include "tests/support/FakePedal.h"
#include "tests/support/WavBuilder.h"

#include "device/DeviceCommands.h"
#include "device/SendScheduler.h"
#include "irfile/IR.h"
#include "upload/SlotUpload.h"

#include <csignal>
#include <cstdlib>

namespace cabslot::testing {
namespace {

// Simulates passing time: a poll is two ticks, so one upload frame.
class Ticking final : public UploadWait {
public:
    bool waitForUpload() override {
        armedDuringUpload |= CheckMCUInportIR_Finish == 1;
        duringUpload();
        runSendScheduler();
        runSendScheduler();
        if (isInportIR == 0)
            afterLastFrame();
        return ++uploadPolls != giveUpAtUploadPoll;
    }
    bool waitForConfirmation(std::uint32_t poll) override {
        EXPECT_EQ(poll, confirmationPolls);
        if (poll == confirmsAtPoll)
            confirm();
        return ++confirmationPolls != giveUpAtConfirmationPoll;
    }

    static void confirm() { ImportIRSuccess_ReveiveData(nullptr); }

    std::function<void()> duringUpload = [] {};
    std::function<void()> afterLastFrame = [] {};
    std::uint32_t confirmsAtPoll = UINT32_MAX;
    std::uint32_t uploadPolls = 0;
    std::uint32_t confirmationPolls = 0;
    std::uint32_t giveUpAtUploadPoll = 0;
    std::uint32_t giveUpAtConfirmationPoll = 0;
    bool armedDuringUpload = false;
};

class SlotUpload : public DeviceTest {
protected:
    SlotUpload() {
        const Bytes name = {'o', 'l', 'd'};
        const Bytes factory = {'1'};
        for (std::size_t i = 0; i < slotCount; ++i) {
            IRNameArr.setCharacters(i, name);
            isInternalIRArray2.setCharacters(i, factory);
        }
        runSendScheduler(); // the two opening frames
        runSendScheduler();
        device->reports.clear();
    }

    std::string wav(const std::string& name = "Cab.wav", std::int32_t sample = 1) {
        return folder.write(name, WavBuilder{}.add(sample).add(-2).bytes());
    }

    TempFolder folder;
    Ticking waiting;
};

TEST_F(SlotUpload, AnAbandonedUploadIsSentBeforeTheNextIsStaged) {
    waiting.giveUpAtUploadPoll = 2;
    EXPECT_EQ(loadSlot(1, wav(), {}, waiting).end, UploadEnd::givenUp);
    device->reports.clear();
    waiting = {};
    waiting.confirmsAtPoll = 0;
    waiting.duringUpload = [this] {
        const bool first = waiting.uploadPolls < 5; // the other frames of the first upload
        EXPECT_EQ(IR_InportNumber, first ? 1U : 2U);
        EXPECT_EQ(irdatabuff[0], first ? 0x000100U : 0x000700U);
    };
    EXPECT_EQ(loadSlot(2, wav("Other.wav", 7), {}, waiting).end, UploadEnd::confirmed);
    EXPECT_EQ(waiting.uploadPolls, 5U + 7U);
}

TEST_F(SlotUpload, LoadsConfirmsAndRecords) {
    waiting.confirmsAtPoll = 2;
    EXPECT_EQ(loadSlot(3, wav(), {}, waiting).end, UploadEnd::confirmed);
    EXPECT_EQ(waiting.uploadPolls, 7U);
    EXPECT_EQ(waiting.confirmationPolls, 3U);
    EXPECT_FALSE(waiting.armedDuringUpload);
    EXPECT_EQ(device->reports.size(), 55U);
    EXPECT_EQ(IR_InportNumber, 3U);
    EXPECT_EQ(irdatabuff[1], 0xFFFE00U);
    EXPECT_EQ(IRNameArr.at(2), "Cab           ");
    EXPECT_EQ(IRNameArr.at(1), "old");
    EXPECT_EQ(isInternalIRArray[2], 0);
    EXPECT_EQ(isInternalIRArray2.at(2), "0");
    EXPECT_EQ(isInternalIRArray[1], 1);

    IR ir{.name = {'E', 'd', 'i', 't', 'e', 'd', ' ', 'n', 'a', 'm', 'e', '.', '1', '2', '3'},
          .factory = true,
          .source = {}};
    ir.block[0] = 0x000700;
    waiting = {};
    waiting.confirmsAtPoll = 0;
    EXPECT_EQ(loadSlot(2, ir, {}, waiting).end, UploadEnd::confirmed);
    EXPECT_EQ(irdatabuff[0], 0x000700U);
    EXPECT_EQ(IRNameArr.at(1), "Edited name.123");
    EXPECT_TRUE(isInternalIRArray[1] == 1 && SendisInternalIR == 1);
}

TEST_F(SlotUpload, APedalThatConfirmsAtOnceIsMissedUnlessTheLastFrameArmsTheWait) {
    waiting.afterLastFrame = Ticking::confirm;
    int told = 0;
    const UploadOptions options = {.recorded = [&](const IRFile*) { ++told; }};
    EXPECT_EQ(loadSlot(1, wav(), options, waiting).end, UploadEnd::notConfirmed);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(waiting.confirmationPolls, 600U);
    EXPECT_EQ(CheckMCUInportIR_Finish, 1U) << "a late confirmation would still clear it";
    EXPECT_EQ(isInternalIRArray[0], 0) << "recorded as if confirmed: the pedal may have stored it";

    // A confirmation before the last frame is an older upload's.
    waiting = {};
    waiting.duringUpload = Ticking::confirm;
    UploadOptions withLast = {.arming = Arming::withLastFrame, .confirmationPolls = 3};
    EXPECT_EQ(loadSlot(1, wav(), withLast, waiting).end, UploadEnd::notConfirmed);
    waiting.afterLastFrame = Ticking::confirm;
    waiting.confirmationPolls = 0;
    EXPECT_EQ(loadSlot(1, wav(), withLast, waiting).end, UploadEnd::confirmed);
    EXPECT_EQ(waiting.confirmationPolls, 0U);
}

TEST_F(SlotUpload, GivingUpRecordsNothing) {
    const UploadOptions options = {.recorded = [](const IRFile*) { ADD_FAILURE(); }};
    waiting.giveUpAtUploadPoll = 3;
    EXPECT_EQ(loadSlot(2, wav(), options, waiting).end, UploadEnd::givenUp);
    EXPECT_EQ(waiting.confirmationPolls, 0U);
    EXPECT_EQ(CheckMCUInportIR_Finish, 0U);
    waiting.giveUpAtConfirmationPoll = 5;
    EXPECT_EQ(loadSlot(2, wav(), options, waiting).end, UploadEnd::givenUp);
    EXPECT_EQ(waiting.confirmationPolls, 5U);
    EXPECT_EQ(isInternalIRArray[1], 1);
}

// Slot 6 aborts the process at the last step of the staging: the upload must not have been
// requested yet, because the device thread would send half-staged data.
TEST_F(SlotUpload, BlockAndNameAreStagedBeforeTheUploadIsRequested) {
    GTEST_FLAG_SET(death_test_style, "fast");
    const auto load = [this] {
        std::signal(SIGABRT, [](int) { std::_Exit(isInportIR); });
        loadSlot(6, wav(), {}, waiting);
    };
    EXPECT_EXIT(load(), ::testing::ExitedWithCode(0), "Fatal error");
}

} // namespace
} // namespace cabslot::testing
