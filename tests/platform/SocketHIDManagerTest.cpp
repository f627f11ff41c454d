// The HID service over sockets, with the test as the pedal.
#include "tests/support/Files.h"
#include "tests/support/Journal.h"

#include "platform/SocketHIDManager.h"
#include "simulator/server/ListeningSocket.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

class Socket : public ::testing::Test {
protected:
    Socket() {
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
        manager = std::make_unique<SocketHIDManager>(ends[0]);
        EXPECT_TRUE(manager->open({}, journal.callbacks()));
    }
    ~Socket() override { ::close(ends[1]); }

    int ends[2] = {};
    Journal journal;
    std::unique_ptr<HIDManager> manager;
};

TEST_F(Socket, SendsWholeReportsAndRefusesWhenThePedalTakesNone) {
    manager->waitForEvents(std::chrono::steady_clock::now());
    HIDReport report{};
    report[63] = 9;
    ASSERT_TRUE(journal.lastDevice->SetReport(report));
    HIDReport received{};
    EXPECT_EQ(::recv(ends[1], received.data(), received.size(), 0), 64);
    EXPECT_EQ(received, report);

    int accepted = 0;
    while (accepted < 100000 && journal.lastDevice->SetReport(report))
        ++accepted;
    EXPECT_LT(accepted, 100000) << "a full queue refuses, it does not block for ever";
}

TEST(SocketPath, ASecondPedalIsFoundBesideTheFirstAndAnotherFirstOneAfterIt) {
    const TempFolder folder;
    const std::string path = folder.path("pedal");
    std::string why;
    simulator::ListeningSocket first;
    simulator::ListeningSocket second;
    ASSERT_TRUE(first.open(path, why)) << why;

    Journal journal;
    SocketHIDManager manager(path);
    EXPECT_TRUE(manager.open({}, journal.callbacks()));
    const auto says = [&](const std::string& text) {
        for (int i = 0; i < 500 && journal.text.size() < text.size(); ++i)
            manager.waitForEvents(std::chrono::steady_clock::now() + 10ms);
        return journal.text == text;
    };
    EXPECT_TRUE(says("+ "));
    ASSERT_TRUE(second.open(path + ".2", why)) << why;
    EXPECT_TRUE(says("+ + "));
    EXPECT_EQ(manager.copyDevices().size(), 2U);
    first.accept(); // and closes the connection at once
    first.close();
    EXPECT_TRUE(says("+ + - "));
    ASSERT_TRUE(first.open(path, why)) << why;
    EXPECT_TRUE(says("+ + - + "));
}

} // namespace
} // namespace cabslot::testing
