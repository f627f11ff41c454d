// Preset files: reading, what saving writes, and that a failed save leaves the old file. The fuzz
// seeds check the order of the checks and the data area's limits.
#include "preset/QNPresetFile.h"
#include "tests/support/Files.h"
#include "tests/support/Limits.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace cabslot::testing {
namespace {

namespace fs = std::filesystem;

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

    bool holds(char data) const {
        const std::string bytes = contentOf(path_);
        return bytes.size() == 2048 && bytes[512] == data;
    }
    mode_t mode() const {
        struct stat status {};
        EXPECT_EQ(::stat(path_.c_str(), &status), 0);
        return status.st_mode & 07777;
    }
    std::ptrdiff_t filesInFolder() const {
        return std::distance(fs::directory_iterator(folder_.path("")), fs::directory_iterator());
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

TEST_F(PresetFile, WhereNoFileCanBe) {
    const std::string fifo = folder_.path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    fs::create_directory(folder_.path("folder"));
    fs::create_symlink("loop", folder_.path("loop"));
    for (const std::string& path : {fifo, folder_.path("folder"), folder_.path("loop"),
                                    folder_.path("none/x"), std::string(), path_ + '\0'}) {
        EXPECT_EQ(save(path, 1), 8) << path;
        EXPECT_EQ(read(path), 1) << path;
    }
    EXPECT_TRUE(fs::is_fifo(fifo));
    EXPECT_EQ(filesInFolder(), 3);
}

TEST_F(PresetFile, SavingKeepsPermissionsAndLinks) {
    const mode_t old = ::umask(027);
    EXPECT_EQ(save(path_, 1), untouched);
    EXPECT_EQ(mode(), 0640U);
    EXPECT_EQ(::chmod(path_.c_str(), 0606), 0);
    fs::create_symlink("x.preset", folder_.path("link"));
    EXPECT_EQ(save(folder_.path("link"), 2), untouched);
    ::umask(old);
    EXPECT_EQ(mode(), 0606U) << "also what the umask would take away";
    EXPECT_TRUE(fs::is_symlink(folder_.path("link")));
    EXPECT_TRUE(holds(2));
    EXPECT_EQ(save(folder_.path(std::string(255, 'n')), 1), untouched) << "the longest name";
}

TEST_F(PresetFile, AFailedSaveLeavesTheOldFileAndNothingElse) {
    ASSERT_EQ(save(path_, 1), untouched);
    for (const rlim_t space : {0U, 1000U}) {
        const FullDisk full(space);
        EXPECT_EQ(save(path_, 2), 8);
        EXPECT_EQ(save(folder_.path("new"), 2), 8);
    }
    ASSERT_EQ(::chmod(folder_.path("").c_str(), 0555), 0);
    {
        const NotRoot somebody;
        EXPECT_EQ(save(path_, 2), 8);
    }
    ASSERT_EQ(::chmod(folder_.path("").c_str(), 0755), 0);
    EXPECT_TRUE(holds(1));
    EXPECT_EQ(filesInFolder(), 1);
}

} // namespace
} // namespace cabslot::testing
