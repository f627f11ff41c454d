// What is read, what is refused with which number, and the data area.
#include "preset/QNPresetFile.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace cabslot {
namespace {

using testing::TempFolder;

constexpr std::int32_t untouched = -7;

// A good preset whose data are 01, 1534 zeros and FF: they add up to 256.
std::string goodPreset() {
    std::string bytes(2048, '\0');
    bytes[1] = '\x08';
    bytes[4] = '\x01';
    bytes[509] = '\x01';
    bytes[512] = '\x01';
    bytes[2047] = '\xFF';
    return bytes;
}

std::string changed(const std::map<std::size_t, char>& changes) {
    std::string bytes = goodPreset();
    for (const auto& [offset, byte] : changes)
        bytes[offset] = byte;
    return bytes;
}

class PresetFile : public ::testing::Test {
protected:
    void expectRefused(const std::string& path, std::int32_t code) {
        preset_.NewPreset.Buff_A.fill(0x5A);
        std::int32_t error = untouched;
        EXPECT_FALSE(preset_.ReadFileToPresetPath(path, &error)) << path;
        EXPECT_EQ(error, code) << path;
        for (const std::uint8_t byte : preset_.NewPreset.Buff_A)
            ASSERT_EQ(byte, 0x5A) << path;
    }

    TempFolder folder_;
    QNPresetFile preset_;
};

TEST_F(PresetFile, ReadsAGoodFileWhole) {
    // Neither the size field nor the reserve is checked; both are kept.
    const std::string bytes = changed({{0, '\x05'}, {12, 'a'}, {507, 'z'}});
    std::int32_t error = untouched;
    ASSERT_TRUE(preset_.ReadFileToPresetPath(folder_.write("a", bytes), &error));
    EXPECT_EQ(error, 0);
    EXPECT_EQ(std::string(preset_.NewPreset.Buff_A.begin(), preset_.NewPreset.Buff_A.end()), bytes);
}

TEST_F(PresetFile, TheFirstCheckThatFailsGivesTheNumber) {
    struct Row {
        const char* name;
        std::string bytes;
        std::int32_t code;
    };
    const Row rows[] = {
        {"empty", "", 2},
        {"one byte short", goodPreset().substr(0, 2047), 2},
        {"one byte long", goodPreset() + '\0', 2},
        {"much too long", goodPreset() + std::string(100000, 'x'), 2},
        {"device 0", changed({{4, '\0'}}), 3},
        {"device in the highest byte", changed({{4, '\0'}, {7, '\x01'}}), 3},
        {"device 257", changed({{5, '\x01'}}), 3},
        {"sum one less", changed({{508, '\xFF'}, {509, '\0'}}), 6},
        {"sum with a high byte", changed({{511, '\x01'}}), 6},
        {"first data byte", changed({{512, '\x02'}}), 6},
        {"last data byte as a signed one", changed({{508, '\0'}, {509, '\0'}}), 6},
        {"version 1", changed({{8, '\x01'}}), 9},
        {"version that is negative when signed", changed({{11, '\x80'}}), 9},
        {"long and wrong device", changed({{4, '\x02'}}) + 'x', 2},
        {"wrong device, sum, version", changed({{4, '\x02'}, {508, '\x01'}, {8, '\x01'}}), 3},
        {"wrong sum, version", changed({{508, '\x01'}, {8, '\x01'}}), 6},
    };
    for (const Row& row : rows)
        expectRefused(folder_.write(row.name, row.bytes), row.code);
}

TEST_F(PresetFile, WhatIsNoFileCannotBeReadAndIsNotWaitedFor) {
    const std::string fifo = folder_.path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string good = folder_.write("good", goodPreset());
    for (const std::string& path :
         {folder_.path("none"), folder_.path(""), good + "/in", fifo, std::string("/dev/zero"),
          std::string(), good + std::string("\0.bak", 5)})
        expectRefused(path, 1);
}

TEST_F(PresetFile, ChangeDataCopiesVersion0Only) {
    PresetBuffUnion source;
    source.Buff_A.fill(0x11);
    PresetBuffUnion destination;
    ChangeData(source.Buff_A, destination.Buff_A);
    EXPECT_EQ(destination.Buff_A, PresetBuffUnion{}.Buff_A);
    std::fill_n(&source.Buff_A[8], 4, std::uint8_t{0});
    ChangeData(source.Buff_A, destination.Buff_A);
    EXPECT_EQ(destination.Buff_A, source.Buff_A);
}

TEST_F(PresetFile, DataGoInAndOutFromOffset512On) {
    std::vector<std::uint8_t> data(1537, 0x33);
    EXPECT_FALSE(preset_.WritePresetBufferPresetData(data.data(), 1537));
    EXPECT_TRUE(preset_.WritePresetBufferPresetData(data.data(), 0));
    EXPECT_EQ(preset_.NewPreset.Buff_A, PresetBuffUnion{}.Buff_A) << "neither copies";
    EXPECT_TRUE(preset_.WritePresetBufferPresetData(data.data(), 1536));
    EXPECT_EQ(preset_.NewPreset.Buff_A[511], 0) << "the checksum is saving's business";
    EXPECT_EQ(preset_.NewPreset.Buff_A[512], 0x33);
    EXPECT_EQ(preset_.NewPreset.Buff_A[2047], 0x33);

    std::vector<std::uint8_t> out(1537);
    EXPECT_FALSE(preset_.ReadPresetBufferPresetData(out.data(), 0xFFFFFFFF));
    EXPECT_EQ(out, std::vector<std::uint8_t>(1537));
    EXPECT_TRUE(preset_.ReadPresetBufferPresetData(out.data(), 1536));
    data[1536] = 0; // what is behind is left alone
    EXPECT_EQ(out, data);
}

} // namespace
} // namespace cabslot
