// Records of loaded IRs: stored, recalled, damaged, written by two programs at once.
#include "memory/SlotMemory.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>

#include <vector>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

class Memory : public ::testing::Test {
protected:
    Memory() { ::setenv("CABSLOT_STATE", state.c_str(), 1); }
    ~Memory() override { ::unsetenv("CABSLOT_STATE"); }

    SlotMemory memoryOf(const std::string& pedal) {
        return {pedal, [this](const std::string& line) { told.push_back(line); }};
    }

    static SlotRecord record(const std::string& name, std::uint32_t point) {
        SlotRecord made{.name = name, .source = "/irs/" + name + ".wav"};
        made.block.fill(point);
        made.time = std::chrono::sys_days(2026y / 5 / 3) + 18h;
        return made;
    }

    TempFolder folder;
    std::string state = folder.path("new/memory");
    std::vector<std::string> told;
};

TEST_F(Memory, IsRecalledUnderThePedalsNameForItAlone) {
    memoryOf("usb").remember(2, record("Cab", 0xABCDEF));
    SlotMemory later = memoryOf("usb");
    const auto recalled = later.recall(2, "Cab           ");
    ASSERT_TRUE(recalled);
    EXPECT_EQ(recalled->block, record("Cab", 0xABCDEF).block);
    EXPECT_EQ(recalled->source, "/irs/Cab.wav");
    EXPECT_EQ(recalled->time, record("", 0).time);

    EXPECT_FALSE(later.recall(2, "Other")) << "it was loaded elsewhere since";
    EXPECT_FALSE(later.recall(1, "Cab"));
    EXPECT_FALSE(memoryOf("sim").recall(2, "Cab"));
    memoryOf("unix:/run/a").remember(2, record("Cab", 1));
    EXPECT_FALSE(memoryOf("unix:/run/b").recall(2, "Cab"));
    EXPECT_TRUE(memoryOf("unix:/run/x/../a").recall(2, "Cab")) << "the same socket";
    EXPECT_TRUE(told.empty());

    struct stat status {};
    ASSERT_EQ(::stat(state.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
    for (const auto& file : std::filesystem::directory_iterator(state)) {
        ASSERT_EQ(::stat(file.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600U) << file.path();
    }
}

TEST_F(Memory, DamageIsToldOnceAndWrittenOver) {
    memoryOf("usb").remember(1, record("Cab", 7));
    const std::string path = state + "/usb-slot1";
    const std::string whole = contentOf(path);
    std::string changed = whole;
    changed[2000] ^= 1;
    for (const std::string& damaged :
         {whole.substr(0, whole.size() / 2), changed, whole + "x", std::string()}) {
        std::ofstream(path, std::ios::binary) << damaged;
        SlotMemory memory = memoryOf("usb");
        told.clear();
        EXPECT_FALSE(memory.recall(1, "Cab"));
        EXPECT_FALSE(memory.recall(1, "Cab"));
        ASSERT_EQ(told.size(), 1U);
        EXPECT_NE(told[0].find(path + ": it is damaged"), std::string::npos) << told[0];
        memory.remember(1, record("Cab", 8));
        EXPECT_TRUE(memory.recall(1, "Cab"));
    }
    // Another pedal's file under this one's name, as after copying it by hand.
    memoryOf("sim").remember(1, record("Cab", 7));
    std::filesystem::rename(state + "/sim-slot1", path);
    EXPECT_FALSE(memoryOf("usb").recall(1, "Cab"));

    const std::string file = folder.write("file", "");
    ::setenv("CABSLOT_STATE", file.c_str(), 1);
    told.clear();
    memoryOf("usb").remember(1, record("Cab", 7));
    ASSERT_EQ(told.size(), 1U) << "a folder that cannot be made";
}

// Each program writes five hundred records, to its own slot and to a shared one.
TEST_F(Memory, TwoProgramsAtOnceLoseAndMixNothing) {
    constexpr std::uint32_t loads = 500;
    constexpr std::uint32_t common = 4;
    std::vector<pid_t> programs;
    for (const std::uint32_t program : {1U, 2U}) {
        programs.push_back(::fork());
        if (programs.back() != 0)
            continue;
        SlotMemory memory = memoryOf("usb");
        for (std::uint32_t i = 1; i <= loads; ++i)
            memory.remember(i % 2 == 0 ? program : common, record("Cab", 1000 * program + i));
        ::_exit(told.empty() ? 0 : 1);
    }
    SlotMemory memory = memoryOf("usb");
    const auto pointOf = [&](std::uint32_t slot) {
        const auto recalled = memory.recall(slot, "Cab");
        if (!recalled)
            return 0U;
        EXPECT_EQ(recalled->block, record("Cab", recalled->block[0]).block);
        return recalled->block[0];
    };
    for (const pid_t program : programs) {
        int status = 0;
        while (::waitpid(program, &status, WNOHANG) == 0)
            pointOf(common);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(pointOf(1), 1500U);
    EXPECT_EQ(pointOf(2), 2500U);
    EXPECT_TRUE(pointOf(common) == 1499 || pointOf(common) == 2499);
    EXPECT_TRUE(told.empty()) << told[0];
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(state), {}), 3) << "nothing else";
}

} // namespace
} // namespace cabslot::testing
