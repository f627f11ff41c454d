// The HID service over USB: the unmodified hidapi on a mocked bus, with the test at the pedal's
// end.
#include "tests/platform/MockedUsb.h"
#include "tests/support/FakePedal.h"
#include "tests/support/Journal.h"

#include "cli/CommandLine.h"
#include "device/HIDClass.h"
#include "platform/UsbHIDManager.h"

#include <nlohmann/json.hpp>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

class Usb : public ::testing::Test {
protected:
    void open() { EXPECT_TRUE(manager->open(pedalMatching, journal.callbacks())); }
    void wait(std::chrono::milliseconds time = 0ms) {
        manager->waitForEvents(std::chrono::steady_clock::now() + time);
    }
    // Waits until the journal says so, for a few seconds at most.
    ::testing::AssertionResult says(const std::string& text) {
        for (int i = 0; i < 500 && journal.text.size() < text.size(); ++i)
            wait(10ms);
        if (journal.text == text)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "it says " << journal.text;
    }

    MockedUsb usb;
    Journal journal;
    std::unique_ptr<UsbHIDManager> manager = std::make_unique<UsbHIDManager>();
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

struct Doctor {
    explicit Doctor(const char* option = "--json") {
        const char* const arguments[] = {"cabslotctl", "doctor", option};
        ::testing::internal::CaptureStdout();
        status = runCommandLine(3, arguments);
        std::cout.flush();
        said = ::testing::internal::GetCapturedStdout();
    }
    nlohmann::json json() const { return nlohmann::json::parse(said); }

    int status;
    std::string said;
};

TEST_F(Usb, APedalThatIsThereIsAnnouncedOnceOnTheFirstCall) {
    usb.plugIn(0);
    open();
    EXPECT_EQ(journal.text, "");
    wait();
    wait(20ms);
    EXPECT_EQ(journal.text, "+ ");
    ASSERT_EQ(manager->copyDevices().size(), 1U) << "its two usages are one device";
    EXPECT_EQ(manager->copyDevices()[0], journal.lastDevice);
    EXPECT_EQ(manager->whyNoDevice(), "");
}

TEST_F(Usb, APedalThatComesLaterIsFound) {
    open();
    wait();
    EXPECT_EQ(manager->whyNoDevice(), "no pedal was found on USB: plug it in and switch it on");
    usb.plugIn(0);
    EXPECT_TRUE(says("+ "));
}

TEST_F(Usb, AnotherReleaseIsLeftAlone) {
    usb.plugIn(0, "0200");
    open();
    wait();
    EXPECT_EQ(journal.text, "");
    EXPECT_EQ(manager->whyNoDevice(), "the pedal at /dev/hidraw0 has release 512 (0x0200); only "
                                      "release 200 (0x00C8) can be used");
    usb.plugIn(1);
    EXPECT_TRUE(says("+ ")) << "beside one of the right release";
}

TEST_F(Usb, ANodeThatMayNotBeOpenedIsNoAbsentPedal) {
    usb.plugIn(0);
    ASSERT_EQ(::chmod("/dev/hidraw0", 0), 0);
    const WithoutOverride notEvenRoot;
    open();
    wait();
    EXPECT_EQ(journal.text, "");
    const std::string why = manager->whyNoDevice();
    EXPECT_NE(why.find("/dev/hidraw0, but this user may not open it"), std::string::npos) << why;
    EXPECT_NE(why.find("run: sudo cp '"), std::string::npos) << why;
    ASSERT_EQ(::chmod("/dev/hidraw0", 0600), 0);
    EXPECT_TRUE(says("+ ")) << "found without being plugged in again";
}

TEST_F(Usb, ReportsComeWithTheirTrueLength) {
    usb.plugIn(0);
    open();
    wait();
    Bytes report(64, 7);
    report[0] = 0; // no report ID, a count
    usb.sendFromPedal(0, report);
    EXPECT_TRUE(says("+ 64 "));
    EXPECT_EQ(journal.lastReport, report);
    usb.sendFromPedal(0, Bytes(63, 1));
    EXPECT_TRUE(says("+ 64 63 "));
    usb.sendFromPedal(0, Bytes(65, 1));
    EXPECT_TRUE(says("+ 64 63 65 "));
}

TEST_F(Usb, AReportLeavesBehindAZero) {
    usb.plugIn(0);
    open();
    wait();
    for (const std::uint8_t first : Bytes{0, 63}) {
        HIDReport report{first, 9};
        report[63] = 0xEE;
        ASSERT_TRUE(journal.lastDevice->SetReport(report));
        Bytes expected = {0};
        expected.insert(expected.end(), report.begin(), report.end());
        EXPECT_EQ(usb.nextWrite(0), expected);
    }
}

TEST_F(Usb, UnpluggingAndPluggingInAgain) {
    usb.plugIn(0);
    open();
    wait();
    const HIDDeviceRef old = journal.lastDevice;
    usb.unplug(0);
    EXPECT_TRUE(says("+ - "));
    EXPECT_EQ(journal.lastDevice, old);
    EXPECT_FALSE(old->SetReport({}));
    EXPECT_TRUE(manager->copyDevices().empty());
    for (int i = 0; i < 60; ++i)
        wait(10ms); // long enough to look again
    EXPECT_EQ(manager->whyNoDevice(), "the pedal was unplugged");
    usb.plugIn(1);
    EXPECT_TRUE(says("+ - + "));
    EXPECT_NE(journal.lastDevice, old);
}

TEST_F(Usb, ANodeThatStaysButCannotBeReadIsLost) {
    usb.plugIn(0);
    open();
    wait();
    usb.breakOff(0);
    wait();
    EXPECT_EQ(journal.text, "+ ") << "one failed read proves nothing";
    EXPECT_TRUE(says("+ - "));
}

TEST_F(Usb, AWriteThatFailsForGoodIsALossAtTheNextCall) {
    usb.plugIn(0);
    open();
    wait();
    usb.breakOff(0);
    EXPECT_FALSE(journal.lastDevice->SetReport({}));
    EXPECT_EQ(journal.text, "+ ");
    wait();
    EXPECT_EQ(journal.text, "+ - ");
}

TEST_F(Usb, SignalsAreNoLoss) {
    usb.plugIn(0);
    open();
    wait();
    std::signal(SIGUSR1, [](int) {});
    std::atomic<bool> enough{false};
    std::thread sender([&enough, target = ::pthread_self()] {
        while (!enough) {
            ::pthread_kill(target, SIGUSR1);
            std::this_thread::sleep_for(500us);
        }
    });
    for (int i = 0; i < 70; ++i)
        wait(10ms);
    enough = true;
    sender.join();
    EXPECT_EQ(journal.text, "+ ");
}

TEST_F(Usb, TwoPedalsAreBothReadAndEachGoesAlone) {
    usb.plugIn(0);
    usb.plugIn(1);
    open();
    wait();
    EXPECT_EQ(journal.text, "+ + ");
    const std::vector<HIDDeviceRef> both = manager->copyDevices();
    ASSERT_EQ(both.size(), 2U);

    ASSERT_TRUE(both[1]->SetReport({5}));
    const unsigned second = usb.hasWrite(0) ? 0 : 1; // the bus's order is its own
    usb.sendFromPedal(1 - second, Bytes(64, 1));
    EXPECT_TRUE(says("+ + 64 "));
    EXPECT_EQ(journal.lastDevice, both[0]);
    usb.sendFromPedal(second, Bytes(64, 1));
    EXPECT_TRUE(says("+ + 64 64 "));
    EXPECT_EQ(journal.lastDevice, both[1]);

    usb.unplug(second);
    EXPECT_TRUE(says("+ + 64 64 - "));
    EXPECT_EQ(journal.lastDevice, both[1]);
    EXPECT_TRUE(both[0]->SetReport({})) << "the other one stays";
    EXPECT_EQ(manager->whyNoDevice(), "");
}

TEST_F(Usb, ASecondPedalIsFoundBesideTheFirstAndAThirdAfterIt) {
    usb.plugIn(0);
    open();
    wait();
    usb.plugIn(1);
    EXPECT_TRUE(says("+ + "));
    EXPECT_EQ(manager->copyDevices().size(), 2U);
    usb.unplug(0);
    EXPECT_TRUE(says("+ + - "));
    usb.plugIn(2);
    EXPECT_TRUE(says("+ + - + "));
}

TEST_F(Usb, ADeviceThatTheLinkHasClosedStaysClosedUntilItIsPluggedInAgain) {
    usb.plugIn(0);
    open();
    wait();
    journal.lastDevice->close();
    wait(1100ms);
    EXPECT_EQ(journal.text, "+ ");
    EXPECT_EQ(manager->copyDevices().size(), 1U) << "still plugged in";
    usb.unplug(0);
    usb.plugIn(1);
    EXPECT_TRUE(says("+ - + "));
}

// The whole link on the bus.
class UsbLink : public Usb {
protected:
    UsbLink() { resetSharedState(); }
    ~UsbLink() override {
        link.reset();
        resetSharedState();
    }

    void start() {
        usb.plugIn(0);
        link = std::make_unique<HIDClass>(*manager);
        link->addObserver([this] { lost = link->KVOValue() == deviceLost; });
        link->OpenDevice();
        EXPECT_EQ(usb.nextWrite(0).size(), 65U);
        const Bytes request = usb.nextWrite(0);
        ASSERT_EQ(request.size(), 65U);
        EXPECT_EQ(Bytes(request.begin(), request.begin() + 9),
                  (Bytes{0, 7, 0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E}));
    }
    static void upload() {
        SendFileName.fill('n');
        for (std::uint32_t k = 0; k < 1024; ++k)
            irdatabuff[k] = k * 8191U & 0xFFFFFF;
        IR_InportNumber = 3;
        isInportIR = 1;
    }
    // The valid bytes of the seven frames, from the layout alone.
    static Bytes expectedStream() {
        Bytes name = {0xE9, 0, 3, 0};
        name.insert(name.end(), 15, 'n');
        Bytes stream = makeFrame(name);
        for (std::uint8_t frame = 1; frame <= 6; ++frame) {
            Bytes body = {0xE9, frame, 3, 0};
            const unsigned shift = 16 - 8 * ((frame - 1U) % 3);
            const unsigned first = frame <= 3 ? 0 : 512;
            for (unsigned k = first; k < first + 512; ++k)
                body.push_back(static_cast<std::uint8_t>(k * 8191U >> shift));
            const Bytes whole = makeFrame(body);
            stream.insert(stream.end(), whole.begin(), whole.end());
        }
        return stream;
    }

    std::atomic<bool> lost{false};
    std::unique_ptr<HIDClass> link;
};

TEST_F(UsbLink, AnUploadArrivesByteForByte) {
    start();
    upload();
    Bytes stream;
    for (int i = 0; i < 55; ++i) {
        const Bytes packet = usb.nextWrite(0);
        ASSERT_EQ(packet.size(), 65U) << i;
        ASSERT_EQ(packet[0], 0) << i;
        ASSERT_LE(packet[1], 63) << i;
        stream.insert(stream.end(), packet.begin() + 2, packet.begin() + 2 + packet[1]);
    }
    EXPECT_EQ(stream, expectedStream());

    CheckMCUInportIR_Finish = 1;
    const Bytes confirmation = makeFrame({0xF8});
    Bytes report(64);
    report[0] = static_cast<std::uint8_t>(confirmation.size());
    std::copy(confirmation.begin(), confirmation.end(), report.begin() + 1);
    usb.sendFromPedal(0, report);
    for (int i = 0; i < 1000 && CheckMCUInportIR_Finish == 1; ++i)
        std::this_thread::sleep_for(5ms);
    EXPECT_EQ(CheckMCUInportIR_Finish, 0U);
    EXPECT_FALSE(lost);
}

TEST_F(UsbLink, UnpluggedInTheMiddleOfAnUpload) {
    start();
    upload();
    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(usb.nextWrite(0).size(), 65U);
    usb.unplug(0);
    for (int i = 0; i < 1000 && !lost; ++i)
        std::this_thread::sleep_for(5ms);
    EXPECT_TRUE(lost);
    EXPECT_EQ(manager->whyNoDevice(), "the pedal was unplugged");
}

TEST_F(UsbLink, WithoutAPedalTheProgramSaysSo) {
    const char* const arguments[] = {"cabslotctl", "--pedal", "usb", "list"};
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(runCommandLine(4, arguments), 3);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "cabslotctl: no pedal was found on USB: plug it in and switch it on\n");
}

TEST_F(Usb, TheDoctorSaysWhatItFound) {
    const Doctor none;
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(none.json()["version"], 1);
    EXPECT_EQ(none.json()["status"], "no_pedal");
    EXPECT_FALSE(none.json().contains("path"));

    usb.plugIn(0, "0100");
    const Doctor other;
    EXPECT_EQ(other.status, 3);
    EXPECT_EQ(other.json()["status"], "other_release");
    EXPECT_EQ(other.json()["release"], 256);

    usb.plugIn(1);
    ASSERT_EQ(::chmod("/dev/hidraw1", 0), 0);
    {
        const WithoutOverride notEvenRoot;
        const Doctor closed;
        EXPECT_EQ(closed.status, 3);
        EXPECT_EQ(closed.json()["status"], "not_permitted");
        EXPECT_EQ(closed.json()["path"], "/dev/hidraw1");
        const std::string fix = closed.json()["fix"];
        EXPECT_NE(fix.find("sudo udevadm control --reload && sudo udevadm trigger"),
                  std::string::npos)
            << fix;
    }
    usb.breakOff(1);
    const Doctor broken;
    EXPECT_EQ(broken.status, 3);
    EXPECT_EQ(broken.json()["status"], "failing") << broken.said;

    usb.unplug(1);
    usb.plugIn(2);
    const Doctor good;
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.json()["status"], "ok");
    EXPECT_EQ(good.json()["path"], "/dev/hidraw2");
    EXPECT_FALSE(good.json().contains("fix"));
}

} // namespace
} // namespace cabslot::testing
