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

TEST_F(Names, ARefusedFileReleasesTheOneBeforeAndClearsTheFlag) {
    open("f", factoryFile(16, "\x01\x02\x03"));
    EXPECT_FALSE(file_.OpenFilePath("missing.wav"));
    EXPECT_EQ(SendisInternalIR, 1) << "nothing was read";
    EXPECT_FALSE(file_.setIrdataBuff());
    EXPECT_EQ(file_.whyRefused(), "no file is loaded");
    EXPECT_FALSE(file_.OpenFilePath(folder_.write("a.wav", "RIFF....WAVE")));
    EXPECT_EQ(SendisInternalIR, 0);
}

} // namespace
} // namespace cabslot::testing
