// Files, folders and sockets that are not as expected: a clear message, a status, and nothing that
// hangs or remains.
#include "tests/support/Limits.h"
#include "tests/support/Programs.h"

#include "platform/SocketHIDManager.h"

#include <sys/stat.h>

namespace cabslot::testing {
namespace {

class Hostile : public ProgramTest {
protected:
    /// Runs cabslot-sim, which must refuse; returns its message.
    std::string refusedPedal(const std::string& socketPath, const std::string& state) {
        Program simulator({CABSLOT_SIM, "--socket", socketPath, "--state", state}, folder, "pedal");
        EXPECT_EQ(simulator.wait(), 1);
        return simulator.err();
    }
};

TEST_F(Hostile, AFullDiskLosesNothingThatWasThere) {
    const std::string wavFile = wav();
    const std::string old = folder.write("block", "what was there");
    startPedal();
    ASSERT_EQ(run({"load", "2", wavFile}), 0) << err;
    {
        const FullDisk full(512);
        EXPECT_EQ(run({"inspect", wavFile, "--block", old, "--force"}), 2);
        EXPECT_EQ(err, "cabslotctl: " + old + " cannot be written: File too large\n");
        EXPECT_EQ(run({"preset", "new", folder.path("new.preset")}), 2);
        EXPECT_EQ(run({"--trace", folder.path("trace"), "list"}), 0) << "the names are here";
        EXPECT_TRUE(errHas("/trace is not complete"));
        EXPECT_EQ(run({"--trace", folder.path("trace2"), "load", "1", wavFile}), 0) << err;
        EXPECT_TRUE(errHas("/trace2 is not complete") && errHas("cannot be remembered: "));
        startPedal(); // this pedal may not write either
        EXPECT_EQ(run({"clear", "2", "--confirm-timeout", "0.5"}), 4);
    }
    EXPECT_EQ(contentOf(old), "what was there");
    EXPECT_FALSE(std::filesystem::exists(folder.path("new.preset")));
    EXPECT_EQ(contentOf(folder.path("st/user2.slot")).substr(4096, 3), "Cab");
    for (const auto& where : {folder.path(), folder.path() / "st"})
        for (const auto& entry : std::filesystem::directory_iterator(where))
            EXPECT_NE(entry.path().filename().string().front(), '.') << "left: " << entry.path();
}

TEST_F(Hostile, StateFoldersAndSlotFilesThatCannotBeHad) {
    EXPECT_TRUE(refusedPedal(socket, "/proc/none")
                    .starts_with("cabslot-sim: cannot make the folder /proc/none"));
    std::filesystem::create_directory(folder.path("st"));
    folder.write("st/user2.slot", "short");
    EXPECT_NE(refusedPedal(socket, folder.path("st"))
                  .find("user2.slot is not a slot file: it has 5 bytes"),
              std::string::npos);
    const WithVariable noFolder("XDG_STATE_HOME", "/dev/null");
    EXPECT_EQ(run({"list"}, "sim"), 3);
    EXPECT_TRUE(errHas("cannot make the folder /dev/null"));
}

TEST_F(Hostile, SocketsThatAreInUseOrNotOurs) {
    startPedal();
    EXPECT_NE(refusedPedal(socket, folder.path("st")).find("another program is listening there"),
              std::string::npos);
    EXPECT_EQ(run({"list"}), 0) << "still the first one's";
    pedal->signal(SIGKILL);
    pedal->wait();
    startPedal(); // replaces the killed one's socket file

    const std::string file = folder.write("file", "mine");
    EXPECT_NE(refusedPedal(file, folder.path("st")).find("not a socket"), std::string::npos);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_EQ(run({"list"}, "unix:" + file), 3);
    EXPECT_TRUE(errHas("no pedal answers at " + file + ": Connection refused"));

    ASSERT_EQ(::chmod(socket.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path("").c_str(), 0755), 0);
    const NotRoot somebody;
    SocketHIDManager manager(socket);
    EXPECT_TRUE(manager.open({}, {}));
    EXPECT_EQ(manager.whyNoDevice(), "you have no permission to use the pedal at " + socket);
}

TEST_F(Hostile, ProgramsThatWantOnePedalAtOnceTakeTurnsAndNeverMix) {
    const WithVariable ownState("XDG_STATE_HOME", folder.path("state"));
    startPedal();
    std::vector<std::unique_ptr<Program>> programs;
    for (const std::string slot : {"1", "2", "3", "4"})
        programs.push_back(std::make_unique<Program>(
            std::vector<std::string>{CABSLOTCTL, "--pedal", "unix:" + socket, "load", slot,
                                     wav("Cab" + slot + ".wav")},
            folder, slot));
    for (const auto& program : programs)
        EXPECT_EQ(program->wait(), 0) << program->err();
    int frames = 0; // of uploads: all seven, in order, before the next upload's first
    std::istringstream log(pedal->out());
    for (std::string line; std::getline(log, line);) {
        EXPECT_EQ(line.find("dropped"), std::string::npos) << line;
        EXPECT_EQ(line.find("skipped"), std::string::npos) << line;
        if (line.starts_with("import step")) {
            EXPECT_EQ(line[12] - '0', frames++ % 7) << line;
        }
    }
    EXPECT_EQ(frames, 4 * 7);

    startPedal({}, "60000");
    const Program holder({CABSLOTCTL, "--pedal", "unix:" + socket, "load", "1", wav()}, folder,
                         "holder");
    ASSERT_TRUE(pedal->hasPrinted("stored User 1"));
    const std::string trace = folder.path("trace");
    EXPECT_EQ(run({"--trace", trace, "list"}, "unix:" + folder.path("st/../pedal.sock")), 3);
    EXPECT_TRUE(errHas("/pedal.sock is in use by cabslotctl (pid "));
    EXPECT_NE(contentOf(trace).find(" waiting: the pedal at"), std::string::npos);
    holder.signal(SIGKILL);
    EXPECT_EQ(run({"list"}), 0) << err;
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("state/cabslot/locks")));
}

} // namespace
} // namespace cabslot::testing
