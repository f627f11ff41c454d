// cabslotctl preset: show, verify, new, export, import.
#include "tests/support/Programs.h"

namespace cabslot::testing {
namespace {

class CabslotctlPreset : public ProgramTest {
protected:
    int preset(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "preset");
        return run(std::move(arguments));
    }

    /// A preset with one byte changed.
    std::string damaged(const std::string& name, std::size_t offset, char byte) {
        EXPECT_EQ(preset({"new", folder.path(name)}), 0) << err;
        std::string bytes = contentOf(folder.path(name));
        bytes.at(offset) = byte;
        return folder.write(name, bytes);
    }

    const std::string file = folder.path("a.preset");
};

TEST_F(CabslotctlPreset, MakesFillsShowsAndExports) {
    EXPECT_EQ(preset({"new", file}), 0) << err;
    EXPECT_EQ(out + err, "");
    EXPECT_EQ(contentOf(file), std::string("\0\x08\0\0\x01\0\0\0", 8) + std::string(2040, '\0'));

    const std::string full(1536, '\xFF');
    EXPECT_EQ(preset({"import", file, folder.write("full", full)}), 0) << err;
    EXPECT_EQ(preset({"export", file, folder.path("out")}), 0) << err;
    EXPECT_EQ(contentOf(folder.path("out")), full);
    EXPECT_EQ(preset({"import", file, folder.write("short", "ab")}), 0) << err;
    EXPECT_EQ(preset({"export", file, folder.path("out")}), 2) << "it is there";
    EXPECT_EQ(preset({"export", file, folder.path("out"), "--force"}), 0) << err;
    EXPECT_EQ(contentOf(folder.path("out")), "ab" + std::string(1534, '\0')) << "nothing old";

    EXPECT_EQ(preset({"show", file}), 0);
    EXPECT_EQ(out, "size      2048\n"
                   "device    1\n"
                   "version   0\n"
                   "reserve   496 bytes, all 0\n"
                   "checksum  195 stored, 195 computed\n"
                   "data      1536 bytes, 2 of them not 0\n"
                   "verdict   good\n");
    EXPECT_EQ(preset({"show", file, "--json"}), 0);
    for (const char* field :
         {"\"version\": 1,", "\"checksum_stored\": 195,", "\"error\": 0,", "\"verdict\": \"good\""})
        EXPECT_TRUE(outHas(field));

    const std::string other = folder.path("b.preset");
    EXPECT_EQ(preset({"new", other, "--data", folder.path("short")}), 0) << err;
    EXPECT_EQ(contentOf(other), contentOf(file));
    EXPECT_EQ(preset({"verify", file, other}), 0) << err;
    EXPECT_EQ(out, file + ": good\n" + other + ": good\n");
}

TEST_F(CabslotctlPreset, TellsWhatIsWrongAndWhatWouldBeRight) {
    ASSERT_EQ(preset({"new", file}), 0);
    struct Row {
        std::string path;
        std::string says;
        int error; ///< 1 and 2: no fields to show
    };
    const Row rows[] = {
        {folder.path("none"), "it cannot be read: there is no such file", 1},
        {folder.path(""), "it cannot be read: it is a folder; choose a file in it", 1},
        {folder.write("short", "abc"), "it is 3 bytes long; a preset is 2048", 2},
        {folder.write("long", std::string(5000, 'x')),
         "it is more than 2048 bytes long; a preset is 2048", 2},
        {damaged("device", 4, 7), "it is for the device 7; this pedal's is 1", 3},
        {damaged("sum", 512, 7), "its checksum is 0; its data add up to 7", 6},
        {damaged("version", 8, 7), "its layout is of version 7; only version 0 is known", 9},
    };
    const std::string data = folder.write("data", "");
    const std::string outFile = folder.path("out");
    for (const Row& row : rows) {
        const std::string before = contentOf(row.path);
        const std::string line = "cabslotctl: " + row.path + ": " + row.says + "\n";
        EXPECT_EQ(preset({"export", row.path, outFile}), 1);
        EXPECT_EQ(out + err, line);
        EXPECT_EQ(preset({"import", row.path, data}), 1);
        EXPECT_EQ(out + err, line);
        EXPECT_EQ(preset({"verify", file, row.path, file}), 1);
        EXPECT_EQ(out, file + ": good\n" + file + ": good\n");
        EXPECT_EQ(err, line);

        const std::string code = std::to_string(row.error);
        EXPECT_EQ(preset({"show", row.path}), 1);
        const bool fields = row.error > 2;
        EXPECT_EQ(err, fields ? "" : line);
        EXPECT_EQ(bool{outHas("verdict   error " + code + ": " + row.says + "\n")}, fields) << out;
        EXPECT_EQ(preset({"show", row.path, "--json"}), 1);
        EXPECT_TRUE(outHas("\"error\": " + code + ",\n  \"verdict\": \"" + row.says));
        EXPECT_EQ(bool{outHas("\"device_id\": null,")}, !fields) << out;
        EXPECT_EQ(contentOf(row.path), before);
    }
    EXPECT_FALSE(std::filesystem::exists(outFile));
}

TEST_F(CabslotctlPreset, NeverWritesOverWhatItShouldNot) {
    ASSERT_EQ(preset({"new", file}), 0);
    const std::string before = contentOf(file);
    const std::string tooMuch = folder.write("much", std::string(1537, 'x'));
    std::filesystem::create_symlink("nowhere", folder.path("link"));
    struct Row {
        std::vector<std::string> command;
        int status;
        std::string says;
    };
    const Row rows[] = {
        {{"new", file}, 2, file + " already exists; give another name, or --force"},
        {{"new", folder.path("link")}, 2, "link already exists"},
        {{"new", "/nonexistent/x"}, 2, "/nonexistent/x cannot be written: No such file"},
        {{"new", folder.path("x"), "--data", tooMuch}, 1, "it is more than 1536 bytes long"},
        {{"import", file, tooMuch}, 1, tooMuch + ": it is more than 1536 bytes long"},
        {{"export", file, file, "--force"}, 2, file + " is the file itself; give another name"},
        {{"export", file, "/dev/full"}, 2, "/dev/full cannot be written: No space left"},
        {{}, 2, "subcommand is required"},
        {{"show"}, 2, "FILE is required"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(preset(row.command), row.status) << row.says;
        EXPECT_TRUE(errHas(row.says));
        EXPECT_EQ(out, "");
    }
    EXPECT_EQ(contentOf(file), before);
    EXPECT_FALSE(std::filesystem::exists(folder.path("x")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("nowhere")));
}

} // namespace
} // namespace cabslot::testing
