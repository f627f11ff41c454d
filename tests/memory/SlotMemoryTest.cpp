// Records of loaded IRs: stored, recalled, undone, damaged, written by two programs at once.
#include "memory/SlotMemory.h"

#include "base/Fnv1a.h"
#include "irfile/NameField.h"
#include "tests/support/Files.h"
#include "tests/support/WithVariable.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <vector>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

class Memory : public ::testing::Test {
protected:
    SlotMemory memoryOf(const std::string& pedal) {
        return {pedal, [this](const std::string& line) { reported.push_back(line); }};
    }

    static SlotRecord record(const std::string& name, std::uint32_t point,
                             const std::string& replaced = "User 1") {
        SlotRecord made{.ir = {.name = nameFieldOf(name), .source = "/irs/" + name + ".wav"},
                        .findings = {{FindingKind::cutOff, "Half is lost."}},
                        .replaced = replaced,
                        .time = std::chrono::sys_days(2026y / 5 / 3) + 18h};
        made.ir.block.fill(point);
        return made;
    }

    /// The names in slot 1's history, the newest first.
    std::string history() {
        std::string names;
        for (const SlotRecord& entry : memoryOf("usb").history(1))
            names += nameText(entry.ir.name) + (entry.confirmed ? " " : "? ");
        return names;
    }

    std::string newestFile() { return entryFiles(state, "usb-slot1").at(0).path; }

    /// Loads what an undo of slot 1 loads; returns its name.
    std::string undo(const std::string& nameFromPedal) {
        auto target = memoryOf("usb").undoTarget(1, nameFromPedal);
        if (!target)
            return "nothing";
        target->replaced = nameFromPedal;
        memoryOf("usb").remember(1, *target);
        return nameText(target->ir.name);
    }

    TempFolder folder;
    std::string state = folder.path("new/memory");
    const WithVariable place{"CABSLOT_STATE", state};
    std::vector<std::string> reported;
};

TEST_F(Memory, IsRecalledUnderThePedalsNameForItAlone) {
    SlotRecord stored = record("Cab", 0xABCDEF);
    stored.ir.factory = true;
    stored.confirmed = false;
    memoryOf("usb").remember(2, stored);
    SlotMemory later = memoryOf("usb");
    const auto recalled = later.recall(2, "Cab           ");
    ASSERT_TRUE(recalled);
    EXPECT_TRUE(isSameContent(recalled->ir, stored.ir));
    EXPECT_EQ(recalled->ir.source, "/irs/Cab.wav");
    EXPECT_EQ(recalled->time, stored.time);
    EXPECT_EQ(recalled->replaced, "User 1");
    EXPECT_FALSE(recalled->confirmed);
    ASSERT_EQ(recalled->findings.size(), 1U);
    EXPECT_EQ(recalled->findings[0].kind, FindingKind::cutOff);
    EXPECT_EQ(recalled->findings[0].text, "Half is lost.");

    EXPECT_FALSE(later.recall(2, "Other")) << "it was loaded elsewhere since";
    EXPECT_FALSE(later.recall(1, "Cab"));
    EXPECT_FALSE(memoryOf("sim").recall(2, "Cab"));
    memoryOf("unix:/run/a").remember(2, record("Cab", 1));
    EXPECT_FALSE(memoryOf("unix:/run/b").recall(2, "Cab"));
    EXPECT_TRUE(memoryOf("unix:/run/x/../a").recall(2, "Cab")) << "the same socket";
    EXPECT_TRUE(reported.empty());

    struct stat status {};
    ASSERT_EQ(::stat(state.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
    for (const auto& file : std::filesystem::directory_iterator(state)) {
        ASSERT_EQ(::stat(file.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600U) << file.path();
    }
}

TEST_F(Memory, ReadsTheFilesOfTheFirstVersion) {
    const auto number = [](std::uint64_t value, int size) {
        std::string bytes;
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> 8 * i);
        return bytes;
    };
    std::filesystem::create_directories(state);
    const auto write = [&](const std::string& name, const std::string& source) {
        std::string file = "cabslot1" + number(1000, 8);
        for (std::size_t i = 0; i < irPointCount; ++i)
            file += number(0xFFFFFF, 4);
        for (const std::string& text : {std::string("usb"), name, source})
            file += number(text.size(), 4) + text;
        file += number(fnv1a({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}), 8);
        std::ofstream(state + "/usb-slot1", std::ios::binary) << file;
    };
    const std::string factoryName = " 1960BT    4x12";
    write(factoryName, "/irs/factory");
    EXPECT_TRUE(memoryOf("usb").recall(1, factoryName).value().ir.factory);
    write("User 1", "");
    EXPECT_EQ(memoryOf("usb").recall(1, "User 1").value().ir.name, paddedNameField("User 1"));
    write("Cab", "/irs/Cab.wav");
    SlotRecord same = record("Cab", 0xFFFFFF);
    EXPECT_TRUE(isSameContent(memoryOf("usb").recall(1, "Cab").value().ir, same.ir));

    memoryOf("usb").remember(1, record("New", 1, "Cab"));
    EXPECT_EQ(history(), "New Cab ");
    EXPECT_EQ(undo("New"), "Cab");
}

TEST_F(Memory, KeepsTwentyDifferentContents) {
    for (std::uint32_t i = 1; i <= 30; ++i)
        memoryOf("usb").remember(1, record("Cab" + std::to_string(i), i));
    for (int i = 0; i < 3; ++i)
        memoryOf("usb").remember(1, record("Cab12", 12));
    const auto kept = memoryOf("usb").history(1);
    ASSERT_EQ(kept.size(), 20U);
    EXPECT_EQ(kept.front().ir.block[0], 12U);
    EXPECT_EQ(kept.back().ir.block[0], 11U);
    EXPECT_EQ(entryFiles(state, "usb-slot1").size(), 20U);
}

TEST_F(Memory, AnUndoRevertsTheNewestLoadAndTheNextUndoTheUndo) {
    EXPECT_EQ(undo("User 1"), "nothing");
    SlotMemory memory = memoryOf("usb");
    memory.remember(1, record("A", 1));
    EXPECT_EQ(undo("A"), "nothing") << "unknown what was there before";
    memory.remember(1, record("B", 2, "A"));
    memory.remember(1, record("B", 2, "B"));
    EXPECT_EQ(undo("B"), "A") << "B was loaded twice";
    EXPECT_EQ(undo("A"), "B");
    EXPECT_EQ(history(), "B A ");
    EXPECT_EQ(undo("Other"), "nothing") << "it was loaded elsewhere since";

    memory.remember(1, record("C", 3, "Other"));
    EXPECT_EQ(undo("C"), "nothing") << "what C replaced was loaded elsewhere";

    SlotRecord lost = record("D", 4, "C");
    lost.confirmed = false;
    memory.remember(1, lost);
    EXPECT_EQ(memory.recall(1, "C").value().ir.block[0], 3U) << "D did not reach the pedal";
    EXPECT_EQ(memory.recall(1, "D").value().confirmed, false);
    EXPECT_EQ(history(), "D? C B A ");
    memory.remember(1, record("E", 5, "C"));
    EXPECT_EQ(undo("E"), "C") << "D was never in the pedal";
    memory.remember(1, lost);
    EXPECT_EQ(undo("C"), "C") << "to be sure after an upload that was not confirmed";
}

TEST_F(Memory, DamageIsReportedOnceAndCostsOneContent) {
    memoryOf("usb").remember(1, record("Cab", 6));
    memoryOf("usb").remember(1, record("Cab", 7));
    const std::string path = newestFile();
    const std::string whole = contentOf(path);
    std::string changed = whole;
    changed[2000] ^= 1;
    for (const std::string& damaged :
         {whole.substr(0, whole.size() / 2), changed, whole + "x", std::string()}) {
        std::ofstream(path, std::ios::binary) << damaged;
        SlotMemory memory = memoryOf("usb");
        reported.clear();
        EXPECT_FALSE(memory.recall(1, "Cab"));
        EXPECT_FALSE(memory.undoTarget(1, "Cab"));
        ASSERT_EQ(reported.size(), 1U);
        EXPECT_NE(reported[0].find(path + ": it is damaged"), std::string::npos) << reported[0];
        EXPECT_EQ(history(), "Cab ");
    }
    memoryOf("usb").remember(1, record("Cab", 8));
    EXPECT_TRUE(memoryOf("usb").recall(1, "Cab"));
    // Another pedal's file under this one's name, as after copying it by hand.
    memoryOf("sim").remember(1, record("Cab", 7));
    std::filesystem::rename(entryFiles(state, "sim-slot1").at(0).path, newestFile());
    EXPECT_FALSE(memoryOf("usb").recall(1, "Cab"));

    const std::string file = folder.write("file", "");
    const WithVariable noFolder("CABSLOT_STATE", file);
    reported.clear();
    memoryOf("usb").remember(1, record("Cab", 7));
    ASSERT_EQ(reported.size(), 1U) << "a folder that cannot be made";
}

// Each program writes two hundred records, to its own slot and to a shared one.
TEST_F(Memory, TwoProgramsAtOnceLoseAndMixNothing) {
    constexpr std::uint32_t loads = 200;
    constexpr std::uint32_t common = 4;
    std::vector<pid_t> programs;
    for (const std::uint32_t program : {1U, 2U}) {
        programs.push_back(::fork());
        if (programs.back() != 0)
            continue;
        SlotMemory memory = memoryOf("usb");
        for (std::uint32_t i = 1; i <= loads; ++i)
            memory.remember(i % 2 == 0 ? program : common, record("Cab", 1000 * program + i));
        ::_exit(reported.empty() ? 0 : 1);
    }
    SlotMemory memory = memoryOf("usb");
    for (const pid_t program : programs) {
        int status = 0;
        while (::waitpid(program, &status, WNOHANG) == 0) {
            const auto recalled = memory.recall(common, "Cab");
            EXPECT_TRUE(!recalled ||
                        isSameContent(recalled->ir, record("Cab", recalled->ir.block[0]).ir));
        }
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(memory.recall(1, "Cab").value().ir.block[0], 1000 + loads);
    EXPECT_EQ(memory.recall(2, "Cab").value().ir.block[0], 2000 + loads);
    const auto shared = memory.history(common);
    ASSERT_EQ(shared.size(), contentsKept);
    EXPECT_EQ(shared.front().ir.block[0] % 1000, loads - 1);
    EXPECT_TRUE(reported.empty()) << reported[0];
    for (const auto& file : std::filesystem::directory_iterator(state))
        EXPECT_TRUE(file.path().filename().string().starts_with("usb-slot")) << file.path();
}

} // namespace
} // namespace cabslot::testing
