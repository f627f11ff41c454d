// Files, folders and sockets that are not what they should be: a clear word, a status, and nothing
// that hangs or is left behind.
#include "tests/support/Programs.h"

#include "cli/OutputFile.h"
#include "irfile/QNIRFile.h"
#include "platform/SocketHIDManager.h"
#include "simulator/pedal/PedalStore.h"
#include "simulator/server/ListeningSocket.h"

#include <sys/stat.h>

#include <atomic>

namespace cabslot::testing {
namespace {

class Hostile : public ProgramTest {
protected:
    /// The names of all that lies in the folder, but for the programs' own output.
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
            const std::string extension = entry.path().extension();
            if (extension != ".out" && extension != ".err")
                names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(Hostile, WhatIsNoFileIsRefusedAtOnce) {
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.path("one"), folder.path("other"));
    std::filesystem::create_symlink(folder.path("other"), folder.path("one"));
    std::filesystem::resize_file(folder.write("huge.wav", "RIFF"), 5ULL << 30);
    simulator::ListeningSocket listener;
    ASSERT_TRUE(listener.open(socket, err)) << err;
    struct Row {
        std::string path;
        std::string asIR;
        std::string asPreset{};
    };
    const Row rows[] = {
        {folder.path("pipe"), "a pipe"}, // nobody will ever write into it
        {folder.path("one"), "leads back to itself"},
        {folder.path("huge.wav"), "too large: files of 4 GiB", "more than 2048 bytes"},
        {socket, "a socket"},
        {"/dev/zero", "a device"},
        {"/dev/full", "a device"},
        {"/proc/self/mem", "it is empty", "0 bytes long"},
        {"/", "a folder"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        for (const std::vector<std::string>& command :
             {std::vector<std::string>{"load", "1", row.path}, {"inspect", row.path}}) {
            EXPECT_EQ(run(command), 1);
            EXPECT_NE(err.find(row.asIR), std::string::npos) << err;
        }
        EXPECT_EQ(run({"preset", "show", row.path}), 1);
        EXPECT_NE(err.find(row.asPreset.empty() ? row.asIR : row.asPreset), std::string::npos)
            << err;
    }
}

TEST_F(Hostile, AFileReplacedWhileItIsReadIsTheOldOneOrTheNewOne) {
    const std::string path = folder.path("Cab.wav");
    std::atomic<bool> stop{false};
    const auto put = [&](std::int32_t sample, int count) {
        WavBuilder wav;
        for (int i = 0; i < count; ++i)
            wav.add(sample);
        std::filesystem::rename(folder.write("next", wav.bytes()), path);
    };
    put(1, 1000);
    std::thread other([&] {
        while (!stop) {
            put(2, 20);
            put(1, 1000);
        }
    });
    std::array<std::uint32_t, irPointCount> block{};
    int seen[2] = {0, 0};
    for (int i = 0; i < 2000; ++i) {
        QNIRFile file;
        const bool read = file.OpenFilePath(path) && file.GetIRDataBuffer(block);
        EXPECT_TRUE(read) << file.whyRefused();
        const std::uint32_t sample = block[0] >> 8;
        const std::size_t end = sample == 1 ? 1000 : 20;
        EXPECT_TRUE(block[end - 1] == block[0] && block[end] == 0) << "two files in one";
        ++seen[sample == 1 ? 0 : 1];
    }
    stop = true;
    other.join();
    EXPECT_TRUE(seen[0] > 0 && seen[1] > 0) << seen[0] << " of one, " << seen[1] << " of the other";
}

TEST_F(Hostile, AFullDiskLosesNothingThatWasThere) {
    const std::string wavFile = wav();
    const std::string old = folder.write("block", "what was there");
    startPedal();
    ASSERT_EQ(run({"load", "2", wavFile}), 0) << err;
    const auto before = files();
    {
        const FullDisk full(512);
        EXPECT_EQ(run({"inspect", wavFile, "--block", old}), 2);
        EXPECT_EQ(err, "cabslotctl: " + old + " cannot be written: File too large\n");
        EXPECT_EQ(run({"preset", "new", folder.path("new.preset")}), 2);
        EXPECT_NE(err.find("File too large"), std::string::npos) << err;
        EXPECT_EQ(files(), before);
        EXPECT_EQ(contentOf(old), "what was there");

        EXPECT_EQ(run({"--trace", folder.path("trace"), "list"}), 0) << "the names are here";
        EXPECT_NE(err.find("the trace " + folder.path("trace") + " is not complete"),
                  std::string::npos)
            << err;
        startPedal(); // this one may not write either
        EXPECT_EQ(run({"clear", "2", "--confirm-timeout", "0.5"}), 4);
        EXPECT_NE(err.find("did not confirm"), std::string::npos) << err;
    }
    EXPECT_EQ(contentOf(folder.path("st/user2.slot")).substr(4096, 3), "Cab");
}

TEST_F(Hostile, StateFoldersThatCannotBeHad) {
    for (const std::string state : {"/proc/none", "/dev/null"}) {
        Program simulator({CABSLOT_SIM, "--socket", socket, "--state", state}, folder, "pedal");
        EXPECT_EQ(simulator.wait(), 1);
        EXPECT_EQ(simulator.err().find("cabslot-sim: cannot make the folder " + state), 0U)
            << simulator.err();
        ::setenv("XDG_STATE_HOME", state.c_str(), 1);
        EXPECT_EQ(run({"list"}, "sim"), 3);
        ::unsetenv("XDG_STATE_HOME");
        EXPECT_NE(err.find("cannot make the folder " + state), std::string::npos) << err;
    }
}

TEST_F(Hostile, SocketsThatAreNotOurs) {
    const std::string file = folder.write("file", "");
    EXPECT_EQ(run({"list"}, "unix:" + file), 3);
    EXPECT_NE(err.find("no pedal answers at " + file + ": Connection refused"), std::string::npos)
        << err;
}

TEST_F(Hostile, WhatBelongsToAnotherUser) {
    startPedal();
    ASSERT_EQ(::chmod(socket.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path("").c_str(), 0555), 0);
    {
        const NotRoot somebody;
        SocketHIDManager manager(socket);
        EXPECT_TRUE(manager.open({}, {}));
        EXPECT_EQ(manager.whyNoDevice(), "you have no permission to use the pedal at " + socket);
        simulator::ListeningSocket listener;
        std::string why;
        EXPECT_FALSE(listener.open(socket, why));
        EXPECT_EQ(why, "cannot listen on " + socket + ": Permission denied");
        EXPECT_FALSE(writeOutputFile(folder.path("new"), {}, why));
        EXPECT_EQ(why, folder.path("new") + " cannot be written: Permission denied");
        EXPECT_FALSE(simulator::PedalStore::open(folder.path("new"), why));
        EXPECT_EQ(why, "cannot make the folder " + folder.path("new") + ": Permission denied");
    }
    ASSERT_EQ(::chmod(folder.path("").c_str(), 0755), 0);
}

} // namespace
} // namespace cabslot::testing
