// The commands as a user runs them, and every kind of wrong usage.
#include "tests/support/Programs.h"

#include <algorithm>

namespace cabslot::testing {
namespace {

class Cabslotctl : public ProgramTest {};

TEST_F(Cabslotctl, ListsLoadsAndClears) {
    startPedal();
    EXPECT_EQ(run({"list"}), 0);
    EXPECT_EQ(out, "User 1: User 1\nUser 2: User 2\nUser 3: User 3\nUser 4: User 4\n");

    EXPECT_EQ(run({"load", "2", wav()}), 0);
    EXPECT_EQ(out, "User 2: Cab\n");
    EXPECT_EQ(err, "") << "no progress unless on a terminal";
    EXPECT_EQ(run({"list", "--json"}), 0);
    EXPECT_TRUE(outHas("\"version\": 1"));
    EXPECT_TRUE(outHas("\"name\": \"Cab           \""))
        << "padded to 15, of which the 0 byte shows nothing";

    EXPECT_EQ(run({"inspect", wav(), "--block", folder.path("block")}), 0);
    const std::string block = contentOf(folder.path("block"));
    ASSERT_EQ(block.size(), 4096U);
    EXPECT_EQ(block.substr(0, 8), std::string("\x00\x34\x12\x00\x00\xFE\xFF\x00", 8));
    EXPECT_TRUE(contentOf(folder.path("st/user2.slot")).substr(0, 4096) == block);

    EXPECT_EQ(run({"clear", "2"}), 0);
    EXPECT_EQ(out, "User 2: User 2\n");
    EXPECT_TRUE(contentOf(folder.path("st/user2.slot")).substr(0, 4096) == std::string(4096, '\0'));
}

TEST_F(Cabslotctl, LoadsAndClearsSeveralSlotsInOneSession) {
    startPedal();
    std::vector<std::string> command = {"--trace", folder.path("trace"), "load"};
    for (int slot : {3, 1, 4, 2}) {
        const std::string name = "Cab" + std::to_string(slot) + ".wav";
        command.push_back(std::to_string(slot));
        command.push_back(folder.write(name, WavBuilder{}.add(slot).bytes()));
    }
    EXPECT_EQ(run(command), 0) << err;
    EXPECT_EQ(out, "User 3: Cab3\nUser 1: Cab1\nUser 4: Cab4\nUser 2: Cab2\n");
    for (const char slot : {'\1', '\2', '\3', '\4'}) {
        std::string block(4096, '\0');
        block[1] = slot;
        const std::string file = folder.path("st/user" + std::to_string(slot) + ".slot");
        EXPECT_TRUE(contentOf(file).substr(0, 4096) == block) << file;
    }
    const std::string trace = contentOf(folder.path("trace"));
    EXPECT_EQ(std::ranges::count(trace, '>'), 1 + 2 + 4 * 55) << "a heading, two to open, uploads";
    EXPECT_EQ(std::ranges::count(trace, '<'), 1 + 2 + 4) << "a heading, the names, confirmations";

    EXPECT_EQ(run({"list", "--json"}), 0);
    EXPECT_TRUE(outHas("\"name\": \"Cab4\",\n        \"source\": \"" + command.at(8) + "\","));
    EXPECT_EQ(run({"clear", "4", "2"}), 0);
    EXPECT_EQ(out, "User 4: User 4\nUser 2: User 2\n");
    EXPECT_EQ(run({"clear", "--all"}), 0);
    EXPECT_EQ(run({"list", "--json"}), 0);
    EXPECT_TRUE(outHas("\"name\": \"User 3\",\n        \"source\": null,"));
}

TEST_F(Cabslotctl, StopsAtTheFirstSlotThatFailsAndTellsTheRest) {
    const std::string good = wav();
    EXPECT_EQ(run({"load", "1", good, "2", "none.wav", "3", folder.write("x.wav", "")}), 1);
    EXPECT_EQ(err, "cabslotctl: none.wav: there is no such file\n"
                   "cabslotctl: " +
                       folder.path("x.wav") +
                       ": it is empty\n"
                       "cabslotctl: nothing was sent\n");

    startPedal({"--vanish-after", std::to_string(2 + 2 * 55 + 20)});
    EXPECT_EQ(run({"load", "4", good, "3", good, "2", good, "1", good}), 3);
    EXPECT_EQ(out, "User 4: Cab\nUser 3: Cab\n");
    EXPECT_TRUE(errHas("; User 2 may be incomplete: load it again\n"
                       "cabslotctl: 2 of 4 confirmed; not sent: User 1\n"));

    startPedal({"--fault", "never-confirm"});
    EXPECT_EQ(run({"clear", "--confirm-timeout", "0.1", "1", "2", "3"}), 4);
    EXPECT_TRUE(errHas("stored User 1; look"));
    EXPECT_TRUE(errHas("0 of 3 confirmed; not sent: User 2, User 3\n"));
    EXPECT_EQ(run({"list", "--json"}), 0);
    EXPECT_TRUE(outHas("User 1         \",\n      \"factory\": false,\n      \"remembered\": {"));
    EXPECT_TRUE(outHas("\"confirmed\": false"));
}

TEST_F(Cabslotctl, PreparesAFileAndLoadsIt) {
    startPedal();
    WavBuilder late{.rate = 96000};
    for (int i = 0; i < 3000; ++i)
        late.add(i < 960 ? 0 : 9000 - 3 * i);
    const std::string file = folder.write("Late.wav", late.bytes());
    const std::string better = folder.path("better.wav");
    EXPECT_EQ(run({"prepare", file, better, "--json"}), 0) << err;
    EXPECT_TRUE(outHas("Trimmed "));
    EXPECT_EQ(run({"inspect", better, "--block", folder.path("block")}), 0);
    EXPECT_EQ(run({"load", "3", file, "--prepare"}), 0);
    EXPECT_EQ(contentOf(folder.path("st/user3.slot")).substr(0, 4096),
              contentOf(folder.path("block")));
    const std::string before = contentOf(better);
    EXPECT_EQ(run({"prepare", wav(), better}), 2) << "it already exists";
    EXPECT_EQ(run({"prepare", better, better, "--force"}), 2) << "it is the file itself";
    EXPECT_EQ(run({"prepare", file, file, "--into", folder.path("")}), 2) << "twice the same name";
    EXPECT_EQ(run({"prepare", folder.write("no.wav", "no"), folder.path("none.wav")}), 1);
    EXPECT_FALSE(std::filesystem::exists(folder.path("none.wav")));
    EXPECT_EQ(contentOf(better), before);
}

TEST_F(Cabslotctl, BlendsAndCompares) {
    const auto click = [this](const std::string& name, int at, int level) {
        WavBuilder wav{.bits = 24};
        for (int i = 0; i < 500; ++i)
            wav.add(i == at ? level : i == at + 3 ? level / 2 : 0);
        return folder.write(name, wav.bytes());
    };
    const std::string one = click("One.wav", 20, 4000000);
    const std::string two = click("Two.wav", 64, -2000000);
    const std::string both = folder.path("Both.wav");
    EXPECT_EQ(run({"blend", one, two, both, "--mix", "3:1", "--plot", folder.path("b.svg")}), 0)
        << err;
    EXPECT_TRUE(outHas("25 % " + two + ": shifted 1.00 ms earlier, polarity turned")) << out;
    EXPECT_NE(contentOf(folder.path("b.svg")).find("stroke-dasharray=\"7 3\""), std::string::npos);
    EXPECT_EQ(run({"inspect", both, "--block", folder.path("sum")}), 0);
    EXPECT_EQ(contentOf(folder.path("sum")).substr(80, 4), std::string("\xE0\x67\x35\x00", 4))
        << "3500000";
    EXPECT_EQ(run({"blend", one, two, both, "--mix", "0:9", "--force", "--json"}), 0);
    EXPECT_TRUE(outHas("\"share_percent\": 100.0"));
    EXPECT_EQ(run({"inspect", two, "--compare", both}), 0);
    EXPECT_TRUE(outHas("null      they null completely")) << out;
    EXPECT_EQ(run({"inspect", one, "--compare", two, "--json"}), 0);
    EXPECT_TRUE(outHas("\"shift_points\": 44.0")) << out;
    EXPECT_TRUE(outHas("\"polarity\": \"opposite\""));
    EXPECT_EQ(run({"blend", one, folder.path("none.wav"), both, "--force"}), 1);
    EXPECT_EQ(run({"blend", one, two, two, "--force"}), 2) << "it is the file itself";
}

TEST_F(Cabslotctl, LeavesOutTheStepsThatAreNotWanted) {
    WavBuilder late{.rate = 96000};
    for (int i = 0; i < 3000; ++i)
        late.add(i < 960 ? 0 : 9000 - 3 * i);
    const std::string file = folder.write("Late.wav", late.bytes());
    const auto steps = [&](const std::string& option) {
        EXPECT_EQ(run({"prepare", file, folder.path("out.wav"), "--force", "--json", option}), 0);
        std::string found;
        for (const char* step : {"Resampled", "Trimmed", "Faded", "Level"})
            found += outHas(step) ? step : "";
        return found;
    };
    EXPECT_EQ(steps("--no-resample"), "TrimmedLevel");
    EXPECT_EQ(steps("--no-trim"), "ResampledFadedLevel");
}

TEST_F(Cabslotctl, ListsOnlyWhereItCanBeWritten) {
    startPedal();
    const std::string list =
        std::string(CABSLOTCTL) + " --pedal unix:" + socket + " list >/dev/full";
    Program shell({"/bin/sh", "-c", list}, folder, "ctl");
    EXPECT_EQ(shell.wait(), 2);
    EXPECT_EQ(shell.err(), "cabslotctl: standard output cannot be written\n");
}

TEST_F(Cabslotctl, CtrlCEndsItWhateverItWaitsFor) {
    startPedal({}, "60000");
    const auto loading = start({"load", "1", wav(), "2", wav("b.wav")});
    ASSERT_TRUE(pedal->hasPrinted("stored User 1"));
    loading->signal(SIGINT);
    EXPECT_EQ(loading->wait(), 130);
    EXPECT_NE(loading->err().find("0 of 2 confirmed; not sent: User 2"), std::string::npos);

    pedal->signal(SIGSTOP); // no names
    const std::string trace = folder.path("trace");
    const auto listing = start({"--trace", trace, "list"});
    ASSERT_TRUE(eventually([&] { return contentOf(trace).find("matched") != std::string::npos; }));
    listing->signal(SIGINT);
    EXPECT_EQ(listing->wait(), 130);
    pedal->signal(SIGCONT);
}

TEST_F(Cabslotctl, NamesHistoryAndUndo) {
    startPedal();
    const std::string odd = folder.write("H\u00F6he.wav", WavBuilder{}.add(0x1234).bytes());
    EXPECT_EQ(run({"load", "2", odd}), 1);
    EXPECT_EQ(run({"load", "2", odd, "--name", "Cab 1234567"}), 2) << "eleven characters";
    EXPECT_EQ(run({"load", "2", odd, "1", odd, "--name", "Cab"}), 2) << "of which one?";
    EXPECT_EQ(run({"undo", "2"}), 1) << "nothing is known yet";
    EXPECT_EQ(run({"load", "2", odd, "--name", "Edge 12\""}), 0) << err;
    const std::string loaded = contentOf(folder.path("st/user2.slot"));
    EXPECT_EQ(run({"clear", "2"}), 0);
    const std::string cleared = contentOf(folder.path("st/user2.slot"));
    EXPECT_EQ(run({"undo", "2"}), 0) << err;
    EXPECT_EQ(out, "User 2: Edge 12\"\n");
    EXPECT_EQ(contentOf(folder.path("st/user2.slot")), loaded);
    EXPECT_EQ(run({"undo", "2"}), 0) << "again brings the later one back";
    EXPECT_EQ(contentOf(folder.path("st/user2.slot")), cleared);
    EXPECT_EQ(run({"history", "2"}), 0);
    EXPECT_LT(out.find("cleared"), out.find("Edge 12\"         " + odd)) << out;
    EXPECT_EQ(run({"history", "--json"}), 0);
    EXPECT_TRUE(outHas("\"name\": \"Edge 12\\\"\",\n          \"source\": \"" + odd + "\""));
}

TEST_F(Cabslotctl, LoadsAFactoryIR) {
    startPedal();
    const std::string factory = folder.write("x.bin", factoryFile(16, std::string(3072, '\x11')));
    EXPECT_EQ(run({"load", "4", factory}), 0);
    EXPECT_EQ(out, "User 4:  1960BT    4x12\n");
    const std::string stored = contentOf(folder.path("st/user4.slot"));
    EXPECT_EQ(stored.substr(0, 4), std::string("\x11\x11\x11\0", 4));
    EXPECT_EQ(stored.back(), '\1');
}

TEST_F(Cabslotctl, InspectTellsAndDrawsWhatIsOdd) {
    WavBuilder late;
    for (int i = 0; i < 882; ++i)
        late.add(i == 881 ? 20000 : 0);
    const std::string file = folder.write("Late.wav", late.bytes());
    const std::string svg = folder.path("a.SVG");
    EXPECT_EQ(run({"inspect", file, "--plot", svg}), 0);
    EXPECT_TRUE(outHas("\nRMS       -34.39 dBFS\nStarts late: 20.0 ms"));
    EXPECT_EQ(out.find("\xE2"), std::string::npos) << "no waveform but on a terminal";
    EXPECT_EQ(run({"inspect", file, "--json"}), 0);
    EXPECT_TRUE(outHas("\"version\": 1"));
    EXPECT_TRUE(outHas("\"kind\": \"starts_late\""));
    const std::string drawn = contentOf(svg);
    EXPECT_TRUE(drawn.starts_with("<svg") && drawn.ends_with("</text>\n</svg>\n"));
    EXPECT_NE(drawn.find(">Starts late: 20.0 ms of silence"), std::string::npos);

    EXPECT_EQ(run({"inspect", folder.write("text.wav", "no sound"), "--plot", svg + ".svg"}), 1);
    EXPECT_EQ(contentOf(svg + ".svg"), "") << "nothing is drawn of a refused file";
}

TEST_F(Cabslotctl, RemembersInTheBuiltInPedal) {
    const WithVariable own("XDG_STATE_HOME", folder.path("state"));
    EXPECT_EQ(run({"load", "1", wav()}, "sim"), 0);
    EXPECT_EQ(run({"list"}, "sim"), 0);
    EXPECT_EQ(out.substr(0, 12), "User 1: Cab\n");
}

TEST_F(Cabslotctl, RefusesBadFilesBeforeThePedalIsTouched) {
    struct Row {
        std::string path;
        std::string says;
    };
    const Row rows[] = {
        {folder.path("none.wav"), "no such file"},
        {folder.write("rate.wav", WavBuilder{.rate = 22050}.add(1).bytes()), "22050 Hz"},
        {wav("B\u00FCro.wav"), "\u00FC"},
        {folder.write("index.bin", factoryFile(30, "")), "30"},
    };
    for (const Row& row : rows) {
        for (const std::vector<std::string>& command :
             {std::vector<std::string>{"load", "1", row.path}, {"inspect", row.path}}) {
            EXPECT_EQ(run(command), 1) << row.path; // not 3, though no pedal is running
            EXPECT_EQ(out, "");
            EXPECT_TRUE(errHas(row.path + ": "));
            EXPECT_NE(err.find(row.says, row.path.size()), std::string::npos) << err;
        }
    }
}

TEST_F(Cabslotctl, WrongUsageIsNamed) {
    struct Row {
        std::vector<std::string> arguments;
        std::string says;
    };
    const Row rows[] = {
        {{}, "subcommand is required"},
        {{"load", "0", "x.wav"}, "there is no slot 0; there are 1 to 4"},
        {{"load", "5", "x.wav"}, "there is no slot 5; there are 1 to 4"},
        {{"clear", "two"}, "there is no slot two; there are 1 to 4"},
        {{"load", "1"}, "FILE is required"},
        {{"load", "1", "x.wav", "5", "y.wav"}, "there is no slot 5; there are 1 to 4"},
        {{"load", "1", "x.wav", "2"}, "slot 2 has no file"},
        {{"load", "1", "x.wav", "2", "y.wav", "1", "z.wav"}, "slot 1 is named twice"},
        {{"clear", "3", "1", "3"}, "slot 3 is named twice"},
        {{"clear"}, "SLOT (or --all) is required"},
        {{"clear", "1", "--all"}, "give either slots or --all"},
        {{"list", "--timeout", "-1"}, "--timeout"},
        {{"list", "--timeout", "inf"}, "inf is not a number from 0 to 86400"},
        {{"blend", "a", "b.wav"}, "give two or more files, and the WAV file to write"},
        {{"blend", "a", "b", "c.wav", "--mix", "6"}, "one share for each of the 2 files"},
        {{"blend", "a", "b", "c.wav", "--mix", "0:0"}, "one of the shares must be more than 0"},
        {{"blend", "a", "b", "c.wav", "--mix", "6:-4"}, "6:-4 are no shares"},
        {{"blend", "a", "b", "c.wav", "--invert", "3"}, "--invert takes the number of a file"},
        {{"blend", "a", "b", "c.wav", "--no-trim"}, "the switches of prepare need --prepare"},
        {{"inspect", "a", "b", "--compare", "c"}, "--compare takes a single file"},
        {{"prepare", "--fade", "nan", "a", "b.wav"}, "nan is not a number from 0 to 20"},
        {{"--trace", "/nonexistent/trace", "list"}, "/nonexistent/trace"},
        {{"inspect", wav(), "--block", "/nonexistent/block"}, "/nonexistent/block"},
        {{"inspect", wav(), "--plot", "x.gif"}, "x.gif: a plot's name must end with .svg"},
        {{"inspect", wav(), "--block", "/dev/full"}, "/dev/full cannot be written: No space left"},
    };
    EXPECT_EQ(run({"list"}, "unix:"), 2);
    EXPECT_TRUE(errHas("there is no pedal \"unix:\""));
    for (const Row& row : rows) {
        EXPECT_EQ(run(row.arguments), 2) << row.says;
        EXPECT_TRUE(errHas(row.says));
        EXPECT_EQ(out, "");
    }
    EXPECT_EQ(run({"inspect", "[a,b]"}), 1);
    EXPECT_TRUE(errHas("[a,b]: there is no such file")) << "a name, not a list";
}

TEST_F(Cabslotctl, TheVariableGivesThePedal) {
    startPedal();
    const auto withVariable = [&](const std::string& value) {
        const WithVariable pedalChoice("CABSLOT_PEDAL", value);
        return Program({CABSLOTCTL, "list"}, folder, "ctl").wait();
    };
    EXPECT_EQ(withVariable("unix:" + socket), 0);
    EXPECT_EQ(withVariable("unix:" + socket + "x"), 3);
    EXPECT_EQ(withVariable("nonsense"), 2);
}

} // namespace
} // namespace cabslot::testing
