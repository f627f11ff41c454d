// Replacing a file: the old content or the new one, and nothing else.
#include "base/Files.h"

#include "tests/support/Files.h"
#include "tests/support/Limits.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace cabslot::testing {
namespace {

namespace fs = std::filesystem;

class ReplaceFile : public ::testing::Test {
protected:
    static bool replace(const std::string& path, const std::string& content) {
        return replaceFile(path,
                           {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()})
            .empty();
    }
    std::string modeAndContent() const {
        struct stat status {};
        ::stat(path.c_str(), &status);
        return std::to_string(status.st_mode & 07777) + " " + contentOf(path);
    }

    TempFolder folder;
    const std::string path = folder.path("file");
};

TEST_F(ReplaceFile, KeepsPermissionsAndLinks) {
    const mode_t old = ::umask(027);
    EXPECT_TRUE(replace(path, "1"));
    EXPECT_EQ(modeAndContent(), std::to_string(0640) + " 1");
    EXPECT_EQ(::chmod(path.c_str(), 0606), 0); // also what the umask would take away
    fs::create_symlink("file", folder.path("link"));
    EXPECT_TRUE(replace(folder.path("link"), "2"));
    ::umask(old);
    EXPECT_EQ(modeAndContent(), std::to_string(0606) + " 2");
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_TRUE(replace(folder.path(std::string(255, 'n')), "")) << "the longest name";
}

TEST_F(ReplaceFile, LeavesTheOldFileAndNothingElseIfItFails) {
    ASSERT_TRUE(replace(path, "old"));
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    fs::create_symlink("loop", folder.path("loop"));
    for (const std::string& where : {folder.path("fifo"), folder.path(""), folder.path("loop"),
                                     folder.path("none/x"), std::string(), path + '\0'})
        EXPECT_FALSE(replace(where, "new")) << where;
    for (const rlim_t space : {0U, 1000U}) {
        const FullDisk full(space);
        EXPECT_FALSE(replace(path, std::string(2000, 'x')));
        EXPECT_FALSE(replace(folder.path("new"), std::string(2000, 'x')));
    }
    ASSERT_EQ(::chmod(folder.path("").c_str(), 0555), 0);
    {
        const NotRoot somebody;
        EXPECT_FALSE(replace(path, "new"));
    }
    ASSERT_EQ(::chmod(folder.path("").c_str(), 0755), 0);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_TRUE(fs::is_fifo(folder.path("fifo")));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3);
}

} // namespace
} // namespace cabslot::testing
