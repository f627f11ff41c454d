// The HID service over USB: the unmodified hidapi on a mocked bus, with the test at the pedal's
// end. The kernel bench takes the link over a real USB stack; here stands what it cannot do.
#include "tests/support/Journal.h"
#include "tests/support/MockedUsb.h"

#include "cli/CommandLine.h"
#include "platform/UsbHIDManager.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <iostream>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

class Usb : public ::testing::Test {
protected:
    void open() {
        EXPECT_TRUE(manager.open(pedalMatching, journal.callbacks()));
        wait();
    }
    void wait(std::chrono::milliseconds time = 0ms) {
        manager.waitForEvents(std::chrono::steady_clock::now() + time);
    }
    void waitUntilItLooksAgain() {
        for (int i = 0; i < 110; ++i)
            wait(10ms);
    }
    /// Waits until the journal says so, for a few seconds at most.
    bool says(const std::string& text) {
        for (int i = 0; i < 500 && journal.text.size() < text.size(); ++i)
            wait(10ms);
        return journal.text == text;
    }

    MockedUsb usb;
    Journal journal;
    UsbHIDManager manager;
};

// Root may open everything; this thread may not, while the object lives.
class WithoutOverride {
public:
    WithoutOverride() {
        ::syscall(SYS_capget, &header_, before_);
        __user_cap_data_struct without[2] = {before_[0], before_[1]};
        without[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
        ::syscall(SYS_capset, &header_, without);
    }
    ~WithoutOverride() { ::syscall(SYS_capset, &header_, before_); }

private:
    __user_cap_header_struct header_ = {.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    __user_cap_data_struct before_[2] = {};
};

TEST_F(Usb, OnePedalOfTheRightReleaseIsAnnouncedOnce) {
    open();
    EXPECT_EQ(manager.whyNoDevice(), "no pedal was found on USB: plug it in and switch it on");
    usb.plugIn(0, "0200");
    waitUntilItLooksAgain();
    EXPECT_EQ(manager.whyNoDevice(), "the pedal at /dev/hidraw0 has release 512 (0x0200); only "
                                     "release 200 (0x00C8) can be used");
    usb.plugIn(1);
    EXPECT_TRUE(says("+ "));
    EXPECT_EQ(manager.copyDevices(), std::vector{journal.lastDevice}) << "with both its usages";
    EXPECT_EQ(manager.whyNoDevice(), "");
}

TEST_F(Usb, ReportsComeWithTheirTrueLengthAndLeaveBehindAZero) {
    usb.plugIn(0);
    open();
    Bytes report(64, 7);
    report[0] = 0; // no report ID, a count
    usb.sendFromPedal(0, report);
    EXPECT_TRUE(says("+ 64 "));
    EXPECT_EQ(journal.lastReport, report);
    usb.sendFromPedal(0, Bytes(63, 1));
    EXPECT_TRUE(says("+ 64 63 "));
    usb.sendFromPedal(0, Bytes(65, 1));
    EXPECT_TRUE(says("+ 64 63 65 "));
    for (const std::uint8_t first : Bytes{0, 63}) {
        const HIDReport sent{first, 9};
        ASSERT_TRUE(journal.lastDevice->SetReport(sent));
        Bytes expected = {0};
        expected.insert(expected.end(), sent.begin(), sent.end());
        EXPECT_EQ(usb.nextWrite(0), expected);
    }
}

TEST_F(Usb, PedalsComeAndGoBesideEachOther) {
    usb.plugIn(0);
    open();
    const HIDDeviceRef first = journal.lastDevice;
    usb.plugIn(1);
    EXPECT_TRUE(says("+ + "));
    const HIDDeviceRef second = journal.lastDevice;
    EXPECT_EQ(manager.copyDevices(), (std::vector{first, second}));
    usb.sendFromPedal(0, Bytes(64, 1));
    EXPECT_TRUE(says("+ + 64 "));
    EXPECT_EQ(journal.lastDevice, first);
    usb.sendFromPedal(1, Bytes(64, 1));
    EXPECT_TRUE(says("+ + 64 64 "));
    EXPECT_EQ(journal.lastDevice, second);

    second->close();
    waitUntilItLooksAgain();
    EXPECT_EQ(manager.copyDevices().size(), 2U) << "closed, but still plugged in";
    usb.unplug(0);
    EXPECT_TRUE(says("+ + 64 64 - "));
    EXPECT_EQ(journal.lastDevice, first);
    EXPECT_FALSE(first->SetReport({}));
    usb.plugIn(2);
    EXPECT_TRUE(says("+ + 64 64 - + "));
}

TEST_F(Usb, OnlyALossThatIsOneIsALoss) {
    usb.plugIn(0);
    open();
    std::signal(SIGUSR1, [](int) {});
    std::atomic<bool> enough{false};
    std::thread sender([&enough, target = ::pthread_self()] {
        while (!enough) {
            ::pthread_kill(target, SIGUSR1);
            std::this_thread::sleep_for(500us);
        }
    });
    waitUntilItLooksAgain();
    enough = true;
    sender.join();
    EXPECT_EQ(journal.text, "+ ") << "signals interrupt reads";

    usb.breakOff(0); // the node stays, but cannot be read
    wait();
    EXPECT_EQ(journal.text, "+ ") << "one failed read proves nothing";
    EXPECT_TRUE(says("+ - "));
    EXPECT_EQ(manager.whyNoDevice(), "the pedal was unplugged");

    usb.unplug(0);
    usb.plugIn(1);
    EXPECT_TRUE(says("+ - + "));
    usb.breakOff(1);
    EXPECT_FALSE(journal.lastDevice->SetReport({}));
    wait();
    EXPECT_EQ(journal.text, "+ - + - ") << "a write that fails for good is one at the next call";
}

TEST_F(Usb, TheDoctorSaysWhatItFound) {
    const auto expectDoctor = [](int status, const char* word) {
        const char* const arguments[] = {"cabslotctl", "doctor", "--json"};
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(runCommandLine(3, arguments), status);
        std::cout.flush();
        const auto json = nlohmann::json::parse(::testing::internal::GetCapturedStdout());
        EXPECT_EQ(json["version"], 1);
        EXPECT_EQ(json["status"], word);
        return json;
    };
    expectDoctor(3, "no_pedal");
    usb.plugIn(0, "0100");
    EXPECT_EQ(expectDoctor(3, "other_release")["release"], 256);
    usb.plugIn(1);
    ASSERT_EQ(::chmod("/dev/hidraw1", 0), 0);
    {
        const WithoutOverride notEvenRoot;
        const std::string fix = expectDoctor(3, "not_permitted")["fix"];
        EXPECT_NE(fix.find("sudo udevadm control --reload"), std::string::npos);
        open();
        EXPECT_NE(manager.whyNoDevice().find("/dev/hidraw1, but this user may not open it"),
                  std::string::npos);
        ASSERT_EQ(::chmod("/dev/hidraw1", 0600), 0);
        EXPECT_TRUE(says("+ ")) << "found without being plugged in again";
    }
    EXPECT_EQ(expectDoctor(0, "ok")["path"], "/dev/hidraw1");
    usb.breakOff(1);
    expectDoctor(3, "failing");
}

} // namespace
} // namespace cabslot::testing
