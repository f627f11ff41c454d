// The HID service over sockets, and the trace around it, with the test at the pedal's end.
#include "tests/support/Files.h"
#include "tests/support/Journal.h"

#include "platform/SocketHIDManager.h"
#include "platform/TracingHIDManager.h"
#include "simulator/server/ListeningSocket.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <sstream>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

class Socket : public ::testing::Test {
protected:
    Socket() {
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
        manager = std::make_unique<SocketHIDManager>(ends[0]);
    }
    ~Socket() override { closePedal(); }

    void closePedal() {
        if (ends[1] >= 0)
            ::close(std::exchange(ends[1], -1));
    }
    void sendFromPedal(std::size_t size) {
        const std::vector<std::uint8_t> packet(size, 1);
        ASSERT_EQ(::send(ends[1], packet.data(), size, 0), static_cast<ssize_t>(size));
    }
    void open() { EXPECT_TRUE(manager->open({}, journal.callbacks())); }
    void wait() { manager->waitForEvents(std::chrono::steady_clock::now()); }

    std::array<int, 2> ends{};
    std::unique_ptr<HIDManager> manager;
    Journal journal;
};

TEST_F(Socket, AnnouncesFirstAndRemovesOnceAfterTheLastReport) {
    open();
    EXPECT_EQ(journal.text, "") << "only inside waitForEvents()";
    sendFromPedal(64);
    closePedal();
    for (int i = 0; i < 4; ++i)
        wait();
    EXPECT_EQ(journal.text, "+ 64 - ");
    EXPECT_TRUE(manager->copyDevices().empty());
    EXPECT_EQ(manager->whyNoDevice(), "the pedal was unplugged");
    EXPECT_FALSE(journal.lastDevice->SetReport({})) << "a reference may outlive the device";
}

TEST_F(Socket, PacketsOfAnyLengthAreReportsOfThatLength) {
    open();
    for (const std::size_t size : {0U, 1U, 63U, 64U, 65U, 1000U}) {
        sendFromPedal(size);
        wait();
    }
    EXPECT_EQ(journal.text, "+ 0 1 63 64 65 128 ") << "a longer one is cut, but never to 64";
}

TEST_F(Socket, SendsWholeReportsAndRefusesWhenThePedalTakesNone) {
    open();
    wait();
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

TEST_F(Socket, TheTraceTellsTheWholeStory) {
    std::ostringstream trace;
    manager = std::make_unique<TracingHIDManager>(std::move(manager), trace);
    open();
    wait();
    HIDReport report{};
    report[0] = 0xA5;
    EXPECT_TRUE(journal.lastDevice->SetReport(report));
    sendFromPedal(3);
    wait();
    ASSERT_EQ(manager->copyDevices().size(), 1U);
    EXPECT_EQ(manager->copyDevices()[0], journal.lastDevice);
    closePedal();
    wait();
    EXPECT_FALSE(journal.lastDevice->SetReport(report));
    EXPECT_EQ(journal.text, "+ 3 - ");
    EXPECT_EQ(manager->whyNoDevice(), "the pedal was unplugged");

    std::istringstream lines(trace.str());
    std::string line;
    std::vector<std::string> told;
    std::getline(lines, line); // what the columns are
    while (std::getline(lines, line))
        told.push_back(line.substr(12, 20)); // behind the time
    EXPECT_EQ(told,
              (std::vector<std::string>{"a device matched", "> a5 00 00 00 00 00 ", "< 01 01 01",
                                        "a device was removed", "> not accepted: a5 0"}));
}

TEST(SocketPath, SaysWhyThereIsNoPedal) {
    Journal journal;
    SocketHIDManager nobody("/nonexistent/pedal.sock");
    EXPECT_TRUE(nobody.open({}, journal.callbacks()));
    nobody.waitForEvents(std::chrono::steady_clock::now());
    EXPECT_EQ(journal.text, "");
    EXPECT_NE(nobody.whyNoDevice().find("no pedal answers at /nonexistent/pedal.sock"),
              std::string::npos);

    SocketHIDManager tooLong(std::string(200, 'x'));
    EXPECT_TRUE(tooLong.open({}, journal.callbacks()));
    EXPECT_NE(tooLong.whyNoDevice().find("too long; 107 bytes"), std::string::npos);
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
    first.accept(); // and closes it at once
    first.close();
    EXPECT_TRUE(says("+ + - "));
    ASSERT_TRUE(first.open(path, why)) << why;
    EXPECT_TRUE(says("+ + - + "));
}

} // namespace
} // namespace cabslot::testing
