// A slot's upload without a thread: each wait runs scheduler ticks instead.
#include "tests/support/FakePedal.h"
#include "tests/support/WavBuilder.h"

#include "device/DeviceCommands.h"
#include "device/SendScheduler.h"
#include "upload/SlotUpload.h"

#include <functional>

namespace cabslot::testing {
namespace {

// Stands for the passing of time: a poll is two ticks, so one upload frame.
class Ticking final : public UploadWait {
public:
    bool waitForUpload() override {
        armedDuringUpload = CheckMCUInportIR_Finish == 1;
        duringUpload();
        runSendScheduler();
        runSendScheduler();
        if (isInportIR == 0)
            afterLastFrame();
        return ++uploadPolls != giveUpAtUploadPoll;
    }
    bool waitForConfirmation(std::uint32_t poll) override {
        EXPECT_EQ(poll, confirmationPolls);
        duringConfirmation(poll);
        return ++confirmationPolls != giveUpAtConfirmationPoll;
    }

    static void confirm() { ImportIRSuccess_ReveiveData(nullptr); }

    std::function<void()> duringUpload = [] {};
    std::function<void()> afterLastFrame = [] {};
    std::function<void(std::uint32_t)> duringConfirmation = [](std::uint32_t) {};
    std::uint32_t uploadPolls = 0;
    std::uint32_t confirmationPolls = 0;
    std::uint32_t giveUpAtUploadPoll = 0;
    std::uint32_t giveUpAtConfirmationPoll = 0;
    bool armedDuringUpload = false;
};

class SlotUpload : public DeviceTest {
protected:
    SlotUpload() {
        const std::array<std::uint8_t, 3> name = {'o', 'l', 'd'};
        const std::uint8_t factory = '1';
        for (std::size_t i = 0; i < slotCount; ++i) {
            IRNameArr.setCharacters(i, name);
            isInternalIRArray2.setCharacters(i, {&factory, 1});
        }
        runSendScheduler(); // the two opening frames
        runSendScheduler();
        device->reports.clear();
    }

    std::string wav() { return folder.write("Cab.wav", WavBuilder{}.add(1).add(-2).bytes()); }

    TempFolder folder;
    Ticking waiting;
};

TEST_F(SlotUpload, LoadsConfirmsAndRecords) {
    waiting.duringConfirmation = [](std::uint32_t poll) {
        if (poll == 2)
            Ticking::confirm();
    };
    EXPECT_EQ(loadSlot(3, {wav()}, {}, waiting).end, UploadEnd::confirmed);
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
}

TEST_F(SlotUpload, APedalThatConfirmsAtOnceIsMissedUnlessTheWaitWasArmedBefore) {
    waiting.afterLastFrame = Ticking::confirm;
    int told = 0;
    const UploadOptions options = {.arming = Arming::afterUpload,
                                   .recorded = [&](const QNIRFile&) { ++told; }};
    EXPECT_EQ(loadSlot(1, {wav()}, options, waiting).end, UploadEnd::notConfirmed);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(waiting.confirmationPolls, 600U);
    EXPECT_EQ(CheckMCUInportIR_Finish, 1U) << "a late confirmation would still clear it";
    EXPECT_EQ(isInternalIRArray[0], 0) << "recorded as if confirmed";

    Ticking again;
    again.afterLastFrame = Ticking::confirm;
    EXPECT_EQ(loadSlot(1, {wav()}, {.arming = Arming::withLastFrame}, again).end,
              UploadEnd::confirmed);
    EXPECT_EQ(again.confirmationPolls, 0U);
}

TEST_F(SlotUpload, AConfirmationThatComesBeforeTheLastFrameIsNotThisUploads) {
    waiting.duringUpload = Ticking::confirm;
    EXPECT_EQ(
        loadSlot(1, {wav()}, {.arming = Arming::withLastFrame, .confirmationPolls = 3}, waiting)
            .end,
        UploadEnd::notConfirmed);
}

TEST_F(SlotUpload, TakesAFileFromMemoryUnderTheNameOfItsPath) {
    waiting.duringConfirmation = [](std::uint32_t) { Ticking::confirm(); };
    const std::string wav = WavBuilder{}.add(3).bytes();
    const IRSource source = {.path = "Prepared.wav", .bytes = {wav.begin(), wav.end()}};
    EXPECT_EQ(loadSlot(2, source, {}, waiting).end, UploadEnd::confirmed);
    EXPECT_EQ(irdatabuff[0], 0x300U);
    EXPECT_EQ(IRNameArr.at(1), "Prepared      ");
}

TEST_F(SlotUpload, GivingUpRecordsNothing) {
    waiting.giveUpAtConfirmationPoll = 5;
    const UploadOptions options = {.recorded = [](const QNIRFile&) { ADD_FAILURE(); }};
    EXPECT_EQ(loadSlot(2, {wav()}, options, waiting).end, UploadEnd::givenUp);
    EXPECT_EQ(waiting.confirmationPolls, 5U);
    EXPECT_EQ(isInternalIRArray[1], 1);

    Ticking early;
    early.giveUpAtUploadPoll = 3;
    EXPECT_EQ(loadSlot(2, {wav()}, {}, early).end, UploadEnd::givenUp);
    EXPECT_EQ(early.confirmationPolls, 0U);
    EXPECT_EQ(CheckMCUInportIR_Finish, 1U) << "left by the first upload, not set by the second";
}

TEST_F(SlotUpload, ARefusedFileSendsNothing) {
    const std::string text = folder.write("Text.wav", "no WAV file, but long enough to be one");
    const UploadResult refused = loadSlot(2, {text}, {}, waiting);
    EXPECT_EQ(refused.end, UploadEnd::fileRefused);
    EXPECT_NE(refused.whyRefused.find("not a WAV file"), std::string::npos);
    EXPECT_EQ(IR_InportNumber, 2U) << "set before the file is looked at";

    const std::string slow = folder.write("Slow.wav", WavBuilder{.rate = 22050}.add(1).bytes());
    EXPECT_EQ(loadSlot(2, {slow}, {}, waiting).end, UploadEnd::samplesRefused);
    EXPECT_EQ(isInportIR, 0);
    EXPECT_EQ(IRNameArr.at(1), "old");
    EXPECT_EQ(waiting.uploadPolls, 0U);
    EXPECT_TRUE(device->reports.empty());
}

TEST_F(SlotUpload, ClearingLoadsTheBlankIRUnderTheDefaultName) {
    EXPECT_EQ(clearSlot(3, folder.path(""), {}, waiting).end, UploadEnd::fileRefused)
        << "no blank IR there";

    std::filesystem::create_directories(folder.path("Contents/Resources"));
    folder.write("Contents/Resources/0.wav", WavBuilder{}.add(0).bytes());
    irdatabuff.fill(7);
    waiting.duringConfirmation = [](std::uint32_t) { Ticking::confirm(); };
    const std::string bundle = std::filesystem::path(folder.path("x")).parent_path();
    EXPECT_EQ(clearSlot(3, bundle, {}, waiting).end, UploadEnd::confirmed);
    EXPECT_EQ(IRNameArr.at(2), "User 3         ");
    EXPECT_EQ(irdatabuff[0], 0U);
    EXPECT_EQ(std::string(device->reports[0].begin() + 9, device->reports[0].begin() + 24),
              "User 3         ");
}

} // namespace
} // namespace cabslot::testing
