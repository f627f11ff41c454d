// Names and flags as they are sent and shown.
#include "device/SharedState.h"
#include "irfile/QNIRFile.h"
#include "tests/support/WavBuilder.h"

#include <gtest/gtest.h>

namespace cabslot {
namespace {

using testing::factoryFile;
using testing::TempFolder;
using testing::WavBuilder;

class Names : public ::testing::Test {
protected:
    void SetUp() override {
        resetSharedState();
        const std::uint8_t one[] = {'1'};
        for (std::size_t slot = 0; slot < slotCount; ++slot) {
            IRNameArr.setCharacters(slot, {});
            isInternalIRArray2.setCharacters(slot, one);
        }
    }
    void TearDown() override { resetSharedState(); }

    void open(const std::string& name, const std::string& bytes) {
        ASSERT_TRUE(file_.OpenFilePath(folder_.write(name, bytes))) << file_.whyRefused();
    }
    static std::string sent() { return {SendFileName.begin(), SendFileName.end()}; }

    TempFolder folder_;
    QNIRFile file_;
};

const std::string nameEnd("\0    ", 5); // what follows the 15 bytes

TEST_F(Names, OfAWavFile) {
    open("Cab.wav", WavBuilder{}.bytes());
    file_.copyIRName(2);
    EXPECT_EQ(sent(), "Cab       " + nameEnd + nameEnd);
    EXPECT_EQ(IRNameArr.at(2), "Cab           "); // the 0 byte shows nothing: 14 characters
    EXPECT_EQ(IRNameArr.at(1), "");
}

TEST_F(Names, OfFactoryFiles) {
    const std::pair<std::uint8_t, std::string> cases[] = {
        {0, " Champer    1x8"},  {3, "Prince.S   1x10"},  {12, " AC30.S    2x12"},
        {16, " 1960BT    4x12"}, {29, "  B.SVT    8x10"},
    };
    for (const auto& [index, name] : cases) {
        open("caf\xC3\xA9", factoryFile(index, {})); // the file's own name does not matter
        file_.copyIRName(0);
        EXPECT_EQ(sent(), name + nameEnd);
        EXPECT_EQ(IRNameArr.at(0), name);
        EXPECT_EQ(SendisInternalIR, 1);
    }
}

TEST_F(Names, OfAClearedSlot) {
    for (const std::int64_t slot : {0, 1, 2, 3}) {
        const std::string name = "User " + std::to_string(slot + 1) + "         ";
        QNIRFile::nullIRName(slot);
        EXPECT_EQ(sent(), name + nameEnd);
        EXPECT_EQ(IRNameArr.at(static_cast<std::size_t>(slot)), name);
    }
}

TEST_F(Names, AShorterNameLeavesTheEndOfTheOneBefore) {
    open("Cabinet_19.wav", WavBuilder{}.bytes());
    open("Room.wav", WavBuilder{}.bytes());
    file_.copyIRName(0);
    EXPECT_EQ(sent(), "Roomnet_19" + nameEnd + nameEnd);
}

TEST_F(Names, AWavNameAfterAFactoryNameEndsAtTen) {
    open("f", factoryFile(16, {}));
    open("Room.wav", WavBuilder{}.bytes());
    file_.copyIRName(0);
    EXPECT_EQ(sent(), "Room0BT   " + nameEnd + nameEnd);
}

TEST_F(Names, TheFlagFollowsTheFile) {
    SendisInternalIR = 1;
    open("Cab.wav", WavBuilder{}.bytes());
    EXPECT_EQ(SendisInternalIR, 0);
    SendisInternalIR = 1;
    file_.sendIsInternalIR(3);
    EXPECT_EQ(SendisInternalIR, 0);
    EXPECT_EQ(isInternalIRArray[3], 0);
    EXPECT_EQ(isInternalIRArray2.at(3), "0");
    EXPECT_EQ(isInternalIRArray[2], 1);
    EXPECT_EQ(isInternalIRArray2.at(2), "1");

    open("f", factoryFile(1, {}));
    SendisInternalIR = 0;
    file_.sendIsInternalIR(3);
    EXPECT_EQ(SendisInternalIR, 1);
    EXPECT_EQ(isInternalIRArray[3], 1);
    EXPECT_EQ(isInternalIRArray2.at(3), "1");
}

TEST_F(Names, ARefusedFileThatIsNoFactoryFileClearsTheFlag) {
    SendisInternalIR = 1;
    EXPECT_FALSE(file_.OpenFilePath(folder_.path("missing.wav")));
    EXPECT_EQ(SendisInternalIR, 1);
    EXPECT_FALSE(file_.OpenFilePath(folder_.write("text.wav", "some text, long enough")));
    EXPECT_EQ(SendisInternalIR, 0);
}

} // namespace
} // namespace cabslot
