// Preset files: reading, what saving writes, and that a failed save leaves the old file. The fuzz
// seeds check the order of the checks and the data area's limits.
#include "preset/QNPresetFile.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

namespace cabslot::testing {
namespace {

constexpr std::int32_t untouched = -7;

class PresetFile : public ::testing::Test {
protected:
    std::int32_t read(const std::string& path) {
        std::int32_t error = untouched;
        const bool good = preset_.ReadFileToPresetPath(path, &error);
        EXPECT_EQ(good, error == 0);
        return error;
    }

    /// Saves a preset whose first data byte is `data`; returns the error's number.
    static std::int32_t save(const std::string& path, std::uint8_t data) {
        QNPresetFile preset;
        preset.WritePresetBufferPresetData(&data, 1);
        std::int32_t error = untouched;
        const bool saved = preset.SavePresetToFilePath(path, &error);
        EXPECT_EQ(saved, error == untouched);
        EXPECT_EQ(preset.NewPreset.Buff_A[508], data) << "stamped, whatever became of the file";
        return error;
    }

    TempFolder folder_;
    const std::string path_ = folder_.path("x.preset");
    QNPresetFile preset_;
};

TEST_F(PresetFile, SavingStampsTheImageAndReadingChecksIt) {
    std::int32_t error = untouched;
    preset_.NewPreset.Buff_A.fill(0xFF); // 1536 * 255 = 0x5FA00
    ASSERT_TRUE(preset_.SavePresetToFilePath(path_, &error));
    EXPECT_EQ(error, untouched);
    EXPECT_EQ(contentOf(path_), std::string("\0\x08\0\0\x01\0\0\0\0\0\0\0", 12) +
                                    std::string(496, '\xFF') + std::string("\0\xFA\x05\0", 4) +
                                    std::string(1536, '\xFF'));

    EXPECT_EQ(read(path_), 0);
}

TEST_F(PresetFile, ChangeDataCopiesVersion0Only) {
    PresetBuffUnion source;
    source.Buff_A.fill(0x11);
    PresetBuffUnion destination;
    ChangeData(source, destination);
    EXPECT_EQ(destination.Buff_A, PresetBuffUnion{}.Buff_A);
    std::fill_n(&source.Buff_A[8], 4, std::uint8_t{0});
    ChangeData(source, destination);
    EXPECT_EQ(destination.Buff_A, source.Buff_A);
}

TEST_F(PresetFile, DataGoInAndOutFromOffset512OnAndLeaveTheCheckSum) {
    preset_.NewPreset.Buff_A.fill(0x5A);
    std::vector<std::uint8_t> data(1537, 0x33);
    EXPECT_FALSE(preset_.WritePresetBufferPresetData(data.data(), 1537));
    EXPECT_EQ(preset_.NewPreset.Buff_A[512], 0x5A);
    EXPECT_TRUE(preset_.WritePresetBufferPresetData(data.data(), 1535));
    EXPECT_EQ(preset_.NewPreset.Buff_A[508], 0x5A) << "the checksum is saving's business";
    EXPECT_EQ(preset_.NewPreset.Buff_A[512], 0x33);
    EXPECT_EQ(preset_.NewPreset.Buff_A[2047], 0x5A);

    std::vector<std::uint8_t> out(1537);
    EXPECT_FALSE(preset_.ReadPresetBufferPresetData(out.data(), 0xFFFFFFFF));
    EXPECT_TRUE(preset_.ReadPresetBufferPresetData(out.data(), 2));
    EXPECT_EQ(std::vector(out.begin(), out.begin() + 3),
              (std::vector<std::uint8_t>{0x33, 0x33, 0}));
    EXPECT_TRUE(preset_.ReadPresetBufferPresetData(out.data(), 1536));
    EXPECT_EQ(out[1535], 0x5A);
    EXPECT_EQ(out[1536], 0) << "what is behind is left alone";
}

TEST_F(PresetFile, FailuresHaveTheirNumbers) {
    EXPECT_EQ(save(folder_.path("none/x"), 1), 8);
    EXPECT_EQ(read(folder_.path("none/x")), 1);
}

} // namespace
} // namespace cabslot::testing
