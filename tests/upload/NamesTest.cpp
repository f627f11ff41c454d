// Names and flags as sent and displayed. The fuzz seeds check how a path becomes a name.
#include "device/SharedState.h"
#include "tests/support/WavBuilder.h"
#include "upload/QNIRFile.h"

#include <gtest/gtest.h>

namespace cabslot::testing {
namespace {

class Names : public ::testing::Test {
protected:
    Names() {
        resetSharedState();
        const std::uint8_t one = '1';
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            IRNameArr.setCharacters(slot, {});
            isInternalIRArray2.setCharacters(slot, {&one, 1});
        }
    }
    ~Names() override { resetSharedState(); }

    void open(const std::string& name, const std::string& bytes) {
        ASSERT_TRUE(file_.OpenFilePath(folder_.write(name, bytes))) << file_.whyRefused();
    }
    static std::string sent() { return {SendFileName.begin(), SendFileName.end()}; }

    TempFolder folder_;
    QNIRFile file_;
};

const std::string nameEnd("\0    ", 5); // what follows the 15 bytes

const std::string factoryNames = " Champer    1x8V.Champer   1x8Prince.B   1x10Prince.S   1x10"
                                 "  65DLX    1x12  57DLX    1x12  Kitty    1x12  AC15     1x12"
                                 "Twinverb.S 2x12Twinverb.B 2x12Matchbox   2x12 AC30.B    2x12"
                                 " AC30.S    2x12Superverb  4x1059Baseman  4x10 1960AG    4x12"
                                 " 1960BT    4x12 1960BV    4x12UK.Citrus  4x12 Solo.L    4x12"
                                 " Solo.S    4x12 Rect.S    4x12 Rect.T    4x12German.V   4x12"
                                 "German.G   4x12  B.SVT    1x15 B.SVT.S   1x15  B.SVT    4x10"
                                 " B.SVT.S   4x10  B.SVT    8x10";

TEST_F(Names, OfAllThirtyFactoryFiles) {
    for (std::uint8_t index = 0; index < 30; ++index) {
        const std::string name = factoryNames.substr(15U * index, 15);
        open("caf\xC3\xA9", factoryFile(index, {})); // the file's own name is ignored
        file_.copyIRName(0);
        EXPECT_EQ(sent(), name + nameEnd);
        EXPECT_EQ(IRNameArr.at(0), name);
        EXPECT_EQ(SendisInternalIR, 1);
    }
}

TEST_F(Names, OfAWavFile) {
    open("Cabinet_1960.wav", WavBuilder{}.bytes());
    file_.copyIRName(2);
    EXPECT_EQ(sent(), "Cabinet_19" + nameEnd + nameEnd);
    EXPECT_EQ(IRNameArr.at(2), "Cabinet_19    ") << "the 0 byte shows nothing: 14 characters";
    EXPECT_EQ(IRNameArr.at(1), "");
    open("Deep.wav", WavBuilder{}.bytes());
    file_.copyIRName(2);
    EXPECT_EQ(sent(), "Deepnet_19" + nameEnd + nameEnd) << "the end of the one before stays";
}

TEST_F(Names, OfAClearedSlot) {
    for (const std::int64_t slot : {0, 1, 2, 3}) {
        const std::string name = "User " + std::to_string(slot + 1) + "         ";
        QNIRFile::nullIRName(slot);
        EXPECT_EQ(sent(), name + nameEnd);
        EXPECT_EQ(IRNameArr.at(static_cast<std::size_t>(slot)), name);
    }
}

// With one object: a factory file keeps the frame count of the previous WAV file, and a WAV file
// resets everything from the factory file.
TEST_F(Names, FlagsAndCountsFollowTheFile) {
    const auto record = [this](std::uint8_t flag, const std::string& digit) {
        EXPECT_EQ(SendisInternalIR, flag);
        EXPECT_EQ(file_.isInteralIR(), flag == 1);
        SendisInternalIR = 7;
        file_.sendIsInternalIR(3);
        EXPECT_EQ(SendisInternalIR, flag);
        EXPECT_EQ(isInternalIRArray[3], flag);
        EXPECT_EQ(isInternalIRArray2.at(3), digit);
        EXPECT_EQ(isInternalIRArray[2], 1);
        EXPECT_EQ(isInternalIRArray2.at(2), "1");
    };
    open("Two.wav", WavBuilder{}.add(1).add(2).bytes());
    record(0, "0");
    open("f", factoryFile(16, "\x01\x02\x03"));
    record(1, "1");
    file_.setIsInteralIR(false);
    EXPECT_FALSE(file_.setIrdataBuff()) << "there is no format to decode by";
    EXPECT_FALSE(file_.OpenFilePath("missing.wav"));
    EXPECT_FALSE(file_.setIrdataBuff()) << "what was loaded is released";
    EXPECT_EQ(file_.whyRefused(), "no file is loaded");

    open("Deep.wav", WavBuilder{}.add(0x1234).bytes());
    record(0, "0");
    file_.copyIRName(0);
    EXPECT_EQ(sent(), "Deep0BT   " + nameEnd + nameEnd);
    ASSERT_TRUE(file_.setIrdataBuff());
    EXPECT_EQ(irdatabuff[0], 0x123400u);
    EXPECT_EQ(irdatabuff[1], 0u);
}

} // namespace
} // namespace cabslot::testing
