// Pedals that misbehave, and a user who loses patience: exit status, message, what is stored.
#include "tests/cli/Programs.h"

namespace cabslot::testing {
namespace {

using Options = std::vector<std::string>;

class FaultyPedal : public ProgramTest {
protected:
    bool holdsTheIR() const {
        const std::string stored = contentOf(folder.path("st/user2.slot"));
        return stored.size() > 4 && stored.substr(0, 4) == std::string("\x00\x34\x12\x00", 4);
    }
};

TEST_F(FaultyPedal, EveryFaultHasItsEnd) {
    struct Row {
        Options pedal;
        int listStatus;
        int loadStatus;
        std::string loadSays;
    };
    const std::string names = "User 1: User 1\nUser 2: User 2\nUser 3: User 3\nUser 4: User 4\n";
    const Row rows[] = {
        {{"--fault", "garbage"}, 0, 0, ""},
        {{"--fault", "split"}, 0, 0, ""},
        {{"--fault", "merge"}, 0, 0, ""},
        {{"--fault", "confirm-at-once"}, 0, 0, ""},
        {{"--second-device"}, 0, 0, ""},
        {{"--fault", "never-confirm"}, 0, 4, "did not confirm in time"},
        {{"--fault", "corrupt-crc"}, 4, 4, "did not send its data within 0.5 s"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pedal.back());
        std::filesystem::remove_all(folder.path("st"));
        startPedal(row.pedal);
        EXPECT_EQ(run({"list", "--timeout", "0.5"}), row.listStatus) << err;
        EXPECT_EQ(out, row.listStatus == 0 ? names : "");
        EXPECT_EQ(run({"load", "2", wav(), "--timeout", "0.5", "--confirm-timeout", "0.5"}),
                  row.loadStatus);
        EXPECT_EQ(out, row.loadStatus == 0 ? "User 2: Cab\n" : "");
        EXPECT_NE(err.find(row.loadSays), std::string::npos) << err;
        EXPECT_EQ(holdsTheIR(), row.listStatus == 0);
    }
}

// Reports 1 and 2 open the session, 3 to 57 are the upload.
TEST_F(FaultyPedal, APedalThatVanishesEndsTheLoadWithItsLoss) {
    for (const std::string after : {"1", "2", "3", "4", "30", "56", "57"}) {
        SCOPED_TRACE(after);
        std::filesystem::remove_all(folder.path("st"));
        startPedal({"--vanish-after", after}, "60000");
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(run({"load", "2", wav()}), 3);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
        EXPECT_EQ(out, "");
        EXPECT_NE(err.find("the pedal was unplugged"), std::string::npos) << err;
        EXPECT_EQ(holdsTheIR(), after == "57") << "stored whole or not at all";
        EXPECT_EQ(run({"list"}), 0) << "plugged in again";
    }
}

TEST_F(FaultyPedal, NoPedalAtAll) {
    EXPECT_EQ(run({"load", "2", wav()}), 3);
    EXPECT_NE(err.find("no pedal answers at " + socket), std::string::npos) << err;
}

TEST_F(FaultyPedal, CtrlCWhileThePedalStoresSaysSo) {
    startPedal({}, "60000");
    const auto load = start({"load", "2", wav()});
    ASSERT_TRUE(pedal->hasPrinted("stored User 2"));
    load->signal(SIGINT);
    EXPECT_EQ(load->wait(), 130);
    EXPECT_NE(load->err().find("interrupted before the pedal confirmed User 2"), std::string::npos);
    EXPECT_TRUE(holdsTheIR());
}

} // namespace
} // namespace cabslot::testing
