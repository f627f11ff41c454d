// cabslotctl inspect with several files and with folders.
#include "tests/support/Programs.h"

namespace cabslot::testing {
namespace {

class InspectMany : public ProgramTest {
protected:
    /// A folder with three good files, two of them with the same block, and one that is refused.
    InspectMany() {
        WavBuilder half{.rate = 48000};
        half.add(0x4000).samples.resize(2 * 480); // 10 ms
        write("b/Zed.wav", half.bytes());
        write("b/Again and again.WAV", half.bytes());
        write("b/deep/Long.wav", WavBuilder{.samples = std::string(2 * 2000, '\0')}.bytes());
        write("b/no.wav", WavBuilder{.rate = 22050}.add(1).bytes());
        write("b/.hidden.wav", "");
        write("b/notes.txt", "");
        std::filesystem::create_directory_symlink(folder.path("b"), folder.path("b/deep/loop"));
    }

    void write(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories(std::filesystem::path(folder.path(name)).parent_path());
        folder.write(name, bytes);
    }

    const std::string pack = folder.path("b");
    const std::string heading =
        "name             rate  bits       ms    peak     RMS  same  findings  file\n";
};

// A half, and 1023 zeros: -6.02 dB, and 20 log (0.5 / 32) = -36.12 dB.
TEST_F(InspectMany, TellsAFolderInATable) {
    const std::string again = "Again and       48000    16     10.0   -6.02  -36.12    =1  -  " +
                              pack + "/Again and again.WAV\n";
    const std::string longOne =
        "Long            44100    16     45.4  silent  silent     -  silent,cut_off  " + pack +
        "/deep/Long.wav\n";
    const std::string zed =
        "Zed             48000    16     10.0   -6.02  -36.12    =1  -  " + pack + "/Zed.wav\n";
    const std::string refused = "no              refused: 22050 Hz is not supported; 44100, 48000, "
                                "88200 and 96000 Hz are  " +
                                pack + "/no.wav\n";

    EXPECT_EQ(run({"inspect", pack}), 1);
    EXPECT_EQ(out, heading + again + zed + refused);
    EXPECT_EQ(err, "cabslotctl: 1 of 3 files refused\n");
    EXPECT_EQ(run({"inspect", "--recursive", pack}), 1);
    EXPECT_EQ(out, heading + again + longOne + zed + refused);
    EXPECT_EQ(run({"inspect", pack + "/Zed.wav", pack + "/Again and again.WAV"}), 0);
    EXPECT_EQ(out, heading + again + zed);
}

TEST_F(InspectMany, TellsTheSameAsOneJsonDocument) {
    EXPECT_EQ(run({"inspect", "--json", pack + "/no.wav", pack + "/Zed.wav", pack + "/Zed.wav"}),
              1);
    const std::size_t zed = out.find("{\n  \"file\": \"" + pack +
                                     "/Zed.wav\",\n  \"refused\": null,\n"
                                     "  \"kind\": \"wav\",\n  \"name\": \"Zed");
    EXPECT_EQ(out.substr(0, zed), "{\n  \"version\": 1,\n  \"files\": [\n") << out;
    EXPECT_TRUE(out.ends_with("  \"same_block\": 1\n},\n{\n  \"file\": \"" + pack +
                              "/no.wav\",\n  \"refused\": \"22050 Hz is not supported; 44100, "
                              "48000, 88200 and 96000 Hz are\"\n}\n  ]\n}\n"))
        << out;
    EXPECT_EQ(run({"inspect", "--json", pack + "/deep"}), 0) << "one file, but of a folder";
    EXPECT_TRUE(outHas("\"files\": ["));
}

TEST_F(InspectMany, RefusesAFolderWithoutFilesAndOutputsOfOneFile) {
    EXPECT_EQ(run({"inspect", pack, "--block", folder.path("x")}), 2);
    EXPECT_TRUE(errHas("--block and --plot take a single file"));
    std::filesystem::create_directories(folder.path("e/f"));
    EXPECT_EQ(run({"inspect", folder.path("e")}), 1);
    EXPECT_TRUE(errHas("/e: the folder holds no WAV files; --recursive"));
}

} // namespace
} // namespace cabslot::testing
