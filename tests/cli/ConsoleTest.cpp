#include "cli/Console.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <unistd.h>

namespace cabslot::testing {
namespace {

TEST(Console, NamesAreShownWithoutWhatATerminalWouldObey) {
    EXPECT_EQ(shownName("Cab           "), "Cab");
    EXPECT_EQ(shownName(" 1960BT    4x12"), " 1960BT    4x12");
    EXPECT_EQ(shownName("\x1B[2J\x07\x7F"), "?[2J??");
    EXPECT_EQ(shownName("\u009B2J \u00E9"), "?2J \u00E9") << "C1 is control, letters are not";
    EXPECT_EQ(shownName("    "), "");
}

TEST(Console, ProgressIsOneLineOnATerminal) {
    int terminal = -1;
    int stderrEnd = -1;
    ASSERT_EQ(::openpty(&terminal, &stderrEnd, nullptr, nullptr, nullptr), 0);
    const int saved = ::dup(STDERR_FILENO);
    ::dup2(stderrEnd, STDERR_FILENO);
    {
        ProgressLine line;
        line.show("frame 1");
        line.show("frame 1");
        line.show("frame 2");
    }
    std::fflush(stderr);
    ::dup2(saved, STDERR_FILENO);
    const std::string expected = "\r\033[Kframe 1\r\033[Kframe 2\r\033[K";
    std::string seen; // the terminal passes it on in pieces
    for (char byte = 0; seen.size() < expected.size() && ::read(terminal, &byte, 1) == 1;)
        seen += byte;
    EXPECT_EQ(seen, expected);
    for (const int fd : {terminal, stderrEnd, saved})
        ::close(fd);
}

} // namespace
} // namespace cabslot::testing
