// What saving writes, and that the file is the old one or the new one whatever happens.
#include "preset/QNPresetFile.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <sstream>

namespace {

enum class Call { none, write, fsync, rename };

constexpr int killed = -1; // instead of an error: the process is killed at this call

Call troubledCall = Call::none;
int trouble = 0;
std::size_t writtenBefore = 0; // bytes that may be written before the trouble

bool meetsTrouble(Call call) {
    if (call != troubledCall)
        return false;
    if (trouble == killed)
        ::raise(SIGKILL);
    errno = trouble;
    return true;
}

} // namespace

// The linker leads the library's calls here.
extern "C" {
ssize_t __real_write(int descriptor, const void* bytes, size_t size);
int __real_fsync(int descriptor);
int __real_rename(const char* from, const char* to);

ssize_t __wrap_write(int descriptor, const void* bytes, size_t size) {
    if (troubledCall == Call::write) {
        size = std::min(size, writtenBefore);
        writtenBefore -= size;
    }
    return size == 0 && meetsTrouble(Call::write) ? -1 : __real_write(descriptor, bytes, size);
}

int __wrap_fsync(int descriptor) {
    return meetsTrouble(Call::fsync) ? -1 : __real_fsync(descriptor);
}

int __wrap_rename(const char* from, const char* to) {
    return meetsTrouble(Call::rename) ? -1 : __real_rename(from, to);
}
}

namespace cabslot {
namespace {

using testing::contentOf;
using testing::NotRoot;

namespace fs = std::filesystem;

constexpr std::int32_t untouched = -7;

struct Trouble;

class SavePreset : public ::testing::Test {
protected:
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

    static std::int32_t saveWith(const Trouble& kind, int newTrouble, const std::string& path);

    static bool holds(const std::string& path, char data) {
        const std::string bytes = contentOf(path);
        return bytes.size() == 2048 && bytes[512] == data;
    }

    mode_t modeOfFile() const {
        struct stat status {};
        EXPECT_EQ(::stat(path_.c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    std::ptrdiff_t filesInFolder() const {
        return std::distance(fs::directory_iterator(folder_.path("")), fs::directory_iterator());
    }

    testing::TempFolder folder_;
    const std::string path_ = folder_.path("x.preset");
};

TEST_F(SavePreset, StampsTheImageAndWritesItAsItIs) {
    QNPresetFile preset;
    std::int32_t error = untouched;
    ASSERT_TRUE(preset.SavePresetToFilePath(path_, &error));
    EXPECT_EQ(contentOf(path_), std::string("\0\x08\0\0\x01\0\0\0", 8) + std::string(2040, '\0'));

    preset.NewPreset.Buff_A.fill(0xFF); // 1536 * 255 = 0x5FA00
    ASSERT_TRUE(preset.SavePresetToFilePath(path_, &error));
    EXPECT_EQ(error, untouched);
    EXPECT_EQ(contentOf(path_), std::string("\0\x08\0\0\x01\0\0\0\0\0\0\0", 12) +
                                    std::string(496, '\xFF') + std::string("\0\xFA\x05\0", 4) +
                                    std::string(1536, '\xFF'));
    QNPresetFile again;
    EXPECT_TRUE(again.ReadFileToPresetPath(path_, &error));
    EXPECT_EQ(error, 0);
    EXPECT_EQ(again.NewPreset.Buff_A, preset.NewPreset.Buff_A);
}

TEST_F(SavePreset, KeepsPermissionsElseTakesTheUmask) {
    const mode_t old = ::umask(027);
    EXPECT_EQ(save(path_, 1), untouched);
    EXPECT_EQ(modeOfFile(), 0640U);
    EXPECT_EQ(::chmod(path_.c_str(), 0606), 0);
    EXPECT_EQ(save(path_, 2), untouched);
    EXPECT_EQ(modeOfFile(), 0606U) << "also what the umask would take away";
    ::umask(old);
    EXPECT_TRUE(holds(path_, 2));
}

TEST_F(SavePreset, OfALinkTheFileItLeadsToIsReplaced) {
    fs::create_directory(folder_.path("deep"));
    fs::create_symlink("deep/second", folder_.path("first"));
    fs::create_symlink("../x.preset", folder_.path("deep/second"));
    for (const std::uint8_t data : {std::uint8_t{1}, std::uint8_t{2}}) { // first, nothing is there
        EXPECT_EQ(save(folder_.path("first"), data), untouched);
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path_)) &&
                    holds(path_, static_cast<char>(data)));
        EXPECT_TRUE(fs::is_symlink(folder_.path("first")));
        EXPECT_TRUE(fs::is_symlink(folder_.path("deep/second")));
    }
}

TEST_F(SavePreset, WhereNoFileCanBe) {
    const std::string fifo = folder_.path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    fs::create_directory(folder_.path("folder"));
    fs::create_symlink("loop", folder_.path("loop"));
    for (const std::string& path : {fifo, folder_.path("folder"), folder_.path("loop"),
                                    folder_.path("none/x"), std::string(), path_ + '\0'})
        EXPECT_EQ(save(path, 1), 8) << path;
    EXPECT_TRUE(fs::is_fifo(fifo));
    EXPECT_EQ(filesInFolder(), 3);
}

TEST_F(SavePreset, NamesThatLeaveNoRoomForAnother) {
    folder_.write(".cabslot-" + std::to_string(::getpid()) + "-0", "left by a killed process");
    EXPECT_EQ(save(folder_.path(std::string(255, 'n')), 1), untouched); // the longest there is
    EXPECT_TRUE(holds(folder_.path(std::string(255, 'n')), 1));
    EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(SavePreset, IntoAFolderWithoutPermission) {
    ASSERT_EQ(save(path_, 1), untouched);
    ASSERT_EQ(::chmod(folder_.path("").c_str(), 0555), 0);
    {
        const NotRoot somebody;
        EXPECT_EQ(save(path_, 2), 8);
    }
    ASSERT_EQ(::chmod(folder_.path("").c_str(), 0755), 0);
    EXPECT_TRUE(holds(path_, 1));
}

struct Trouble {
    const char* name;
    Call call;
    std::size_t written;
};

constexpr Trouble troubles[] = {
    {"the first byte", Call::write, 0},
    {"the middle", Call::write, 1000},
    {"all written, not yet on the disk", Call::fsync, 0},
    {"all on the disk, not yet in place", Call::rename, 0},
};

std::int32_t SavePreset::saveWith(const Trouble& kind, int newTrouble, const std::string& path) {
    trouble = newTrouble;
    writtenBefore = kind.written;
    troubledCall = kind.call;
    const std::int32_t error = save(path, 2);
    troubledCall = Call::none;
    return error;
}

TEST_F(SavePreset, AFailureLeavesTheOldFileAndNothingElse) {
    ASSERT_EQ(save(path_, 1), untouched);
    for (const Trouble& kind : troubles) {
        SCOPED_TRACE(kind.name);
        EXPECT_EQ(saveWith(kind, ENOSPC, folder_.path("new.preset")), 8);
        EXPECT_EQ(saveWith(kind, EDQUOT, path_), 8);
        EXPECT_EQ(errno, EDQUOT);
        EXPECT_TRUE(holds(path_, 1));
        EXPECT_EQ(filesInFolder(), 1);
    }
}

TEST_F(SavePreset, AKillLeavesTheOldFileAndTheNextSaveWorks) {
    for (const Trouble& kind : troubles) {
        SCOPED_TRACE(kind.name);
        EXPECT_EQ(save(path_, 1), untouched);
        const pid_t child = ::fork();
        if (child == 0) {
            saveWith(kind, killed, path_);
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        EXPECT_TRUE(holds(path_, 1));
    }
    EXPECT_EQ(save(path_, 3), untouched);
    EXPECT_TRUE(holds(path_, 3));
}

} // namespace
} // namespace cabslot
