// What the commands write: files, and text on the standard streams.
#include "tests/support/Programs.h"

#include <sys/stat.h>

#include <cstdlib>

namespace cabslot::testing {
namespace {

class Outputs : public ProgramTest {};

TEST_F(Outputs, NeverReplaceAnInputAndOtherFilesOnlyWithForce) {
    const std::string in = wav("In.wav");
    const std::string same = folder.path("Same.wav");
    const std::string out1 = folder.path("b");
    const std::string pipe = folder.path("pipe.svg");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_hard_link(in, same);
    std::filesystem::create_directory(folder.path("into"));
    struct Row {
        std::vector<std::string> command;
        std::string says;
    };
    const Row rows[] = {
        {{"inspect", in, "--block", same, "--force"}, "is the file itself"},
        {{"prepare", in, same, "--force"}, "is the file itself"},
        {{"--trace", same, "--force", "load", "1", in}, "is the file itself"},
        {{"--trace", folder.write("old", ""), "list"}, "already exists"},
        {{"inspect", in, "--block", folder.path("old")}, "already exists"},
        {{"prepare", in, wav("IN.wav"), "--into", folder.path("into")}, "be written twice"},
        {{"inspect", in, "--block", out1, "--plot", "/nonexistent/x.svg"}, "No such file"},
        {{"inspect", in, "--block", "/dev/full", "--plot", out1 + ".svg"}, "No space left"},
        {{"inspect", in, "--block", out1, "--plot", pipe}, "no program reads from it"},
        {{"--trace", pipe, "list"}, "it is not a file but a pipe"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(run(row.command), 2) << row.says;
        EXPECT_TRUE(errHas(row.says));
        EXPECT_FALSE(std::filesystem::exists(out1) || std::filesystem::exists(out1 + ".svg"));
    }
    EXPECT_EQ(contentOf(in), contentOf(wav("Other.wav")));

    const int reader = ::open(pipe.c_str(), O_RDWR | O_NONBLOCK); // takes nothing
    const std::string page(4096, 'x');
    while (::write(reader, page.data(), page.size()) > 0)
        continue; // until the pipe is full
    const auto stuck = start({"inspect", in, "--plot", pipe});
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // it catches the signal by then
    stuck->signal(SIGTERM);
    EXPECT_NE(stuck->wait(), 0) << "it ends";
    ::close(reader);
}

TEST_F(Outputs, HoldNothingThatATerminalObeys) {
    const std::string evil = "e\x1B[2J\xC2\x9B\x9B\x7F.wav";
    const std::string file = folder.write(evil, WavBuilder{}.add(1).bytes());
    const std::string into = folder.path("into");
    std::filesystem::create_directory(into);
    const std::vector<std::string> commands[] = {
        {"inspect", file},
        {"inspect", file, file},
        {"inspect", file, file, "--json"},
        {"prepare", file, "--into", into},
        {"prepare", file, "--into", into, "--force", "--json"},
        {"audition", file, "--out", file},
        {"load", "1", file},
        {"load", "1", file, "--name", "evil"},
        {"history"},
        {"list", "--json"},
        {"preset", "new", file},
        {"preset", "new", file + "x", "--json"},
        {"preset", "verify", file},
        {"preset", "show", file},
        {"preset", "export", file, file + "x"},
        {"set", "new", file + ".cabset", "1", file},
        {"set", "save", file + ".cabset"},
        {"set", "show", file},
        {"set", "export", file, evil},
        {"clear", evil},
        {"undo", evil},
        {"--trace", file, "list"},
        {evil},
    };
    startPedal();
    for (const auto& command : commands) {
        run(command);
        const std::string all = out + err;
        EXPECT_NE(all, "") << command[0];
        EXPECT_EQ(all.find_first_of("\x1B\x7F\x9B"), std::string::npos) << all;
    }
}

TEST_F(Outputs, NeverReachThePedalIfTheStandardStreamsAreClosed) {
    startPedal();
    const std::string command = "exec >&- 2>&- <&-; exec " CABSLOTCTL " --pedal unix:" + socket;
    EXPECT_EQ(std::system((command + " load 1 " + wav()).c_str()), 0);
    EXPECT_EQ(pedal->out().find("dropped"), std::string::npos) << pedal->out();
}

} // namespace
} // namespace cabslot::testing
