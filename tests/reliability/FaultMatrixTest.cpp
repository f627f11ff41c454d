// Every way a pedal can disturb a load: the message, the status, and the pedal's
// content afterwards. docs/reliability.md has the same table.
#include "tests/support/Programs.h"

#include <cctype>

namespace cabslot::testing {
namespace {

using Options = std::vector<std::string>;

const std::string loaded = "User 2: Cab";
const std::string noData = "the pedal is there but did not send its data within 0.5 s; unplug it, "
                           "plug it in and try again";
const std::string notConfirmed =
    "the pedal did not confirm in time that it has stored User 2; look "
    "with \"cabslotctl list\" and load it again if need be";
const std::string noPedal =
    "no pedal answers at PATH: No such file or directory (is a simulated pedal running there?)";
const std::string interrupted =
    "interrupted before the pedal confirmed User 2; look with \"cabslotctl list\"";
const std::string unplugged = "the pedal was unplugged";
const std::string incomplete = unplugged + "; User 2 may be incomplete: load it again";

enum class Act { load, loadWithoutPedal, loadIntoDeaf, loadUntilCtrlC };

struct Row {
    const char* what; ///< "A pedal that ..."
    Options pedal{};  ///< options of the simulated one
    std::string confirmDelay = "20";
    int status = 0;
    std::string told = loaded; ///< on standard output for status 0, else on standard error
    bool stored = true;        ///< slot 2 holds the new IR; else the old one
    Act act = Act::load;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.what;
}

const Row rows[] = {
    // Reports 1 and 2 open the session, 3 to 57 are the upload.
    {"vanishes after the first report", {"--vanish-after", "1"}, "20", 3, unplugged, false},
    {"vanishes after opening", {"--vanish-after", "2"}, "20", 3, unplugged, false},
    {"vanishes after the name", {"--vanish-after", "3"}, "20", 3, incomplete, false},
    {"vanishes before the last report", {"--vanish-after", "56"}, "20", 3, incomplete, false},
    {"vanishes after the last report", {"--vanish-after", "57"}, "60000", 3, incomplete},
    {"is not there", {}, "20", 3, noPedal, false, Act::loadWithoutPedal},
    {"takes the connection and reads nothing", {}, "20", 4, noData, false, Act::loadIntoDeaf},
    {"sends replies with a wrong CRC", {"--fault", "corrupt-crc"}, "20", 4, noData, false},
    {"replies in reports of 63 and 65 bytes", {"--fault", "wrong-length"}, "20", 4, noData, false},
    {"sends stray bytes before replies", {"--fault", "garbage"}},
    {"sends replies in reports of at most 7 bytes", {"--fault", "split"}},
    {"sends an unknown frame that runs into the reply", {"--fault", "merge"}},
    {"sends 100,000 unknown frames", {"--fault", "flood"}, "5000", 0, loaded},
    {"has another one beside it that talks all the time", {"--second-device"}},
    {"confirms at once, before anyone has polled", {"--fault", "confirm-at-once"}},
    {"confirms while it is polled for", {}, "300"},
    {"never confirms", {"--fault", "never-confirm"}, "20", 4, notConfirmed},
    {"confirms before it has the last frame", {"--fault", "confirm-early"}, "20", 4, notConfirmed},
    {"is still storing at Ctrl-C", {}, "60000", 130, interrupted, true, Act::loadUntilCtrlC},
};

class FaultMatrix : public ProgramTest, public ::testing::WithParamInterface<Row> {
protected:
    int act(Act act, Options load) {
        if (act == Act::loadWithoutPedal)
            pedal.reset();
        if (act == Act::loadIntoDeaf)
            pedal->signal(SIGSTOP);
        const auto loading = start(std::move(load));
        if (act == Act::loadUntilCtrlC) {
            EXPECT_TRUE(pedal->hasPrinted("stored User 2"));
            loading->signal(SIGINT);
        }
        const int status = loading->wait();
        out = loading->out();
        err = loading->err();
        if (act == Act::loadIntoDeaf)
            pedal->signal(SIGCONT);
        return status;
    }
};

TEST_P(FaultMatrix, IsAsTheTableSays) {
    const Row& row = GetParam();
    startPedal(row.pedal, row.confirmDelay);
    Options load = {"load", "2", wav()};
    if (row.status == 4)
        load.insert(load.end(), {"--timeout", "0.5", "--confirm-timeout", "0.5"});
    EXPECT_EQ(act(row.act, std::move(load)), row.status);

    std::string told = row.told;
    if (const auto path = told.find("PATH"); path != std::string::npos)
        told.replace(path, 4, socket);
    EXPECT_EQ(out, row.status == 0 ? told + "\n" : "");
    EXPECT_EQ(err, row.status == 0 ? "" : "cabslotctl: " + told + "\n");
    const std::string slot = contentOf(folder.path("st/user2.slot"));
    EXPECT_EQ(slot.empty(), !row.stored);
    if (row.stored) {
        EXPECT_EQ(slot.substr(0, 8), std::string("\x00\x34\x12\x00\x00\xFE\xFF\x00", 8));
        EXPECT_EQ(slot.substr(4096, 3), "Cab");
    }
}

/// Such as "APedalThatVanishesAfterOpening".
std::string nameOf(const ::testing::TestParamInfo<Row>& info) {
    std::string name = "APedalThat";
    bool first = true;
    for (const char* letter = info.param.what; *letter != '\0'; ++letter) {
        if (std::isalnum(*letter) != 0)
            name += static_cast<char>(first ? std::toupper(*letter) : *letter);
        first = *letter == ' ';
    }
    return name;
}
INSTANTIATE_TEST_SUITE_P(Rows, FaultMatrix, ::testing::ValuesIn(rows), nameOf);

} // namespace
} // namespace cabslot::testing
