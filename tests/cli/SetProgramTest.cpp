// cabslotctl set: save, show, load, export, new, and every kind of bad set.
#include "tests/support/Programs.h"

#include <array>

namespace cabslot::testing {
namespace {

class CabslotctlSet : public ProgramTest {
protected:
    int set(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "set");
        return run(std::move(arguments));
    }

    /// What the pedal holds: points, name and flag of each slot.
    std::array<std::string, 4> slots() const {
        std::array<std::string, 4> all;
        for (std::size_t i = 0; i < all.size(); ++i)
            all.at(i) = contentOf(folder.path("st/user" + std::to_string(i + 1) + ".slot"));
        return all;
    }

    /// A WAV file with points of all 24 bits.
    std::string fullWav(const std::string& name) {
        WavBuilder wav{.bits = 24};
        for (int i = 0; i < 1024; ++i)
            wav.add(i * 16411 - 8388608);
        return folder.write(name, wav.bytes());
    }

    /// Makes `file`, with the slots 1 and 2.
    void makeSet() {
        ASSERT_EQ(set({"new", file, "1", fullWav("Full.wav"), "2", wav()}), 0) << err;
    }

    const std::string file = folder.path("Band.cabset");
};

TEST_F(CabslotctlSet, BringsAllFourSlotsBackByteForByte) {
    startPedal();
    const std::string factory = folder.write("x.bin", factoryFile(16, std::string(3072, '\x11')));
    const std::string full = fullWav("Full.wav");
    ASSERT_EQ(run({"load", "1", full, "--name", "A/B \"1\""}), 0) << err;
    ASSERT_EQ(run({"load", "2", factory, "4", wav("Room 4x12.wav")}), 0) << err;
    ASSERT_EQ(run({"clear", "3"}), 0) << err;
    const auto before = slots();
    EXPECT_EQ(set({"save", file}), 0);
    EXPECT_EQ(out,
              "User 1: A/B \"1\"\nUser 2:  1960BT    4x12\nUser 3: User 3\nUser 4: Room 4x12\n");
    EXPECT_EQ(err, "");
    ASSERT_EQ(run({"clear", "--all"}), 0);
    ASSERT_NE(slots(), before);
    EXPECT_EQ(set({"load", file}), 0) << err;
    EXPECT_EQ(slots(), before);
    EXPECT_EQ(run({"undo", "2"}), 0) << err;
    EXPECT_EQ(out, "User 2: User 2\n");
    EXPECT_EQ(set({"save", file}), 2) << "it is there";
    EXPECT_EQ(set({"load", file, "2"}), 0) << err;
    const std::string saved = contentOf(file);
    EXPECT_EQ(set({"save", file, "--force"}), 0) << err;
    EXPECT_EQ(contentOf(file), saved) << "with the same sources";
    EXPECT_EQ(set({"show", file}), 0);
    EXPECT_TRUE(outHas("User 1: A/B \"1\"          0.00 dBFS     " + full + "\n"));
    EXPECT_TRUE(outHas("User 3: User 3           silent        cleared\nUser 4: Room 4x12  "));
}

TEST_F(CabslotctlSet, IsMadeAndReadAsItsDescriptionShows) {
    const std::string page = contentOf(CABSLOT_SOURCE "/docs/sets.md");
    const auto blockAfter = [&page](const std::string& heading, const std::string& fence) {
        const std::size_t begin = page.find(fence, page.find(heading)) + fence.size();
        return page.substr(begin, page.find("```", begin) - begin);
    };
    std::string commands = blockAfter("## An example", "```sh\n");
    const std::string installed = "/usr/share/cabslot/examples";
    commands.replace(commands.find(installed), installed.size(), CABSLOT_EXAMPLES);
    folder.write("reader.py", blockAfter("## A reader", "```python\n"));
    folder.write("commands", "set -e\ncd " + folder.path().string() +
                                 "\ncabslotctl() { " CABSLOTCTL " \"$@\" >&2; }\n" + commands +
                                 "python3 reader.py Demo.cabset\n");
    Program shell({"/bin/sh", folder.path("commands")}, folder, "shell");
    EXPECT_EQ(shell.wait(), 0) << shell.err();
    EXPECT_EQ(shell.out(), blockAfter("## A reader", "```text\n"));
}

TEST_F(CabslotctlSet, LeavesOutWhatIsUnknownAndStopsAtTheFirstFailure) {
    startPedal();
    EXPECT_EQ(set({"save", file}), 1) << "nothing is known";
    EXPECT_FALSE(std::filesystem::exists(file));
    ASSERT_EQ(run({"load", "1", wav(), "2", wav("b.wav"), "4", wav("c.wav")}), 0);
    EXPECT_EQ(set({"save", file, "3", "2", "4"}), 0);
    EXPECT_EQ(out, "User 2: b\nUser 4: c\n");
    EXPECT_EQ(err, "cabslotctl: User 3 is left out: it was not loaded from this computer\n");
    EXPECT_EQ(set({"show", file, "--json"}), 0);
    EXPECT_TRUE(outHas("\"slot\": 3,\n      \"known\": false\n"));
    const auto before = slots();
    EXPECT_EQ(set({"load", file, "1", "3"}), 1);
    EXPECT_TRUE(errHas("User 3 stays as it is: the set does not know it\n"));
    EXPECT_EQ(slots(), before);

    startPedal({"--vanish-after", std::to_string(2 + 55 + 20)});
    EXPECT_EQ(set({"load", file}), 3);
    EXPECT_EQ(out, "User 2: b\n");
    EXPECT_TRUE(errHas("User 4 may be incomplete: load it again\n"
                       "cabslotctl: 1 of 2 confirmed\n"));
}

TEST_F(CabslotctlSet, ExportsFilesThatTheConversionPassesUnderTheSameNames) {
    startPedal();
    const std::string into = folder.path("into");
    ASSERT_EQ(
        run({"load", "1", fullWav("Cab.wav"), "2", wav("cab.wav"), "3", wav("Ten chars!.wav")}), 0);
    ASSERT_EQ(run({"load", "4", wav("d.wav"), "--name", "A/B"}), 0);
    const auto before = slots();
    ASSERT_EQ(set({"save", file}), 0);
    EXPECT_EQ(set({"export", file, into}), 2) << "there is no such folder";
    std::filesystem::create_directory(into);
    EXPECT_EQ(set({"export", file, into}), 0) << err;
    EXPECT_EQ(err, "cabslotctl: " + into +
                       "/A-B.wav cannot have User 4's name; use load --name to give it\n");
    EXPECT_EQ(set({"export", file, into}), 2) << "they are there";
    const std::string files[] = {"/Cab.wav", "/cab        slot 2.wav", "/Ten chars!.wav",
                                 "/A-B.wav"};
    ASSERT_EQ(run({"load", "1", into + files[0], "2", into + files[1], "3", into + files[2]}), 0)
        << err;
    ASSERT_EQ(run({"load", "4", into + files[3], "--name", "A/B"}), 0) << err;
    EXPECT_EQ(slots(), before);
}

TEST_F(CabslotctlSet, RefusesBadSetsBeforeThePedalIsTouched) {
    makeSet();
    const std::string good = contentOf(file);
    const auto with = [&](const std::string& old, const std::string& now) {
        std::string text = good;
        EXPECT_NE(text.find(old), std::string::npos) << old;
        return text.replace(text.find(old), old.size(), now);
    };
    const std::string points = good.substr(good.find("\"points\": \"") + 11, 4096);
    const std::string many(200000, '[');
    std::string fields = "{";
    for (int i = 0; i < 200; ++i)
        fields += "\"" + std::to_string(i) + "\": 0, ";
    struct Row {
        std::string text;
        std::string says;
    };
    const Row rows[] = {
        {"", "it is not JSON, or damaged, at byte"},
        {good.substr(0, 3000), "it is not JSON, or damaged, at byte 3001"},
        {good + "{}", "it is not JSON, or damaged"},
        {"[1]", "it is not a set: it has no version"},
        {"{\"version\": 1}", "it is not a set: it has no list of slots"},
        {with("\"version\": 1", "\"version\": 2"), "it is of version 2; only version 1 is known"},
        {with("\"version\": 1", "\"version\": 1.0"), "it has no version"},
        {with("\"version\": 1", "\"version\": 99999999999999999999"), "it has no version"},
        {with("\"unknown\"\n", "\"unknown\", \"unknown\"\n"), "it has 5 slots; the pedal has 4"},
        {with("    \"unknown\",\n", ""), "it has 3 slots; the pedal has 4"},
        {with("\"unknown\"\n", "null"), "slot 4: it is neither fields nor \"unknown\""},
        {with("\"Full\"", "\"Fuel\""), "slot 1: its checksum is wrong"},
        {with("\"points\": \"AAC", "\"points\": \"AAD"), "slot 1: its checksum is wrong"},
        {with("\"factory\": false", "\"factory\": 0"),
         "\"factory\" is missing or not true or false"},
        {with("\"name\"", "\"Name\""), "slot 1: its field \"name\" is missing or not a text"},
        {with("\"name\"", "\"factory\": true, \"name\""), "a field is there twice"},
        {with(points, points + "AAAA"), "slot 1: its points take 3075 bytes, not 3072"},
        {with(points, points.substr(1)), "slot 1: its points are not Base64"},
        {with("\"points\": \"AA", "\"points\": \"A\\n"), "slot 1: its points are not Base64"},
        {with("\"Full\"", "\"H\u00F6he\""), "a character that the pedal cannot show"},
        {with("\"Full\"", "\"a\\u001b[2J\""), "a character that the pedal cannot show"},
        {with("\"Full\"", "\"Elevenchars\""), "it has 11 characters; the pedal shows up to 10"},
        {with("\"factory\": false", "\"factory\": true"), "not that of a factory IR"},
        {with("\"source\": \"", "\"source\": \"" + std::string(5000, 'x')),
         "source is empty or too"},
        {with("\"slots\": [", "\"slots\": [" + many), "it is nested too deep"},
        {fields + "\"version\": 1}", "it has too many fields"},
        {good + std::string(300000, ' '), "it is too long for a set: "},
    };
    startPedal();
    const auto before = slots();
    const std::string bad = folder.path("Bad.cabset");
    for (const Row& row : rows) {
        folder.write("Bad.cabset", row.text);
        EXPECT_EQ(set({"load", bad}), 1) << row.says;
        EXPECT_TRUE(errHas(bad + ": "));
        EXPECT_TRUE(errHas(row.says));
        EXPECT_EQ(out, "");
    }
    std::filesystem::resize_file(bad, std::uintmax_t{1} << 32);
    EXPECT_EQ(set({"show", bad}), 1);
    EXPECT_TRUE(errHas("it is too long for a set: 4294967296 bytes"));
    EXPECT_EQ(slots(), before);
    EXPECT_EQ(set({"new", wav(), "1", wav(), "--force"}), 2) << "it is the file itself";
}

} // namespace
} // namespace cabslot::testing
