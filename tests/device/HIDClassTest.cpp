// The device link as a whole, on its thread, over a service under the test's hand.
#include "tests/support/FakePedal.h"

#include "device/HIDClass.h"
#include "device/RepeatingTimer.h"

#include <cmath>
#include <future>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

// One device at first; more are known to copyDevices() only. Deaf when told so.
class FakeManager final : public HIDManager {
public:
    bool open(const HIDMatching& wanted, const HIDCallbacks& callbacks) override {
        matching = wanted;
        callbacks_ = callbacks;
        return opens;
    }
    void waitForEvents(TimePoint deadline) override {
        if (!announced_.exchange(true) && opens)
            callbacks_.matching(callbacks_.context, 0, this, devices.front());
        for (HIDReport report : std::exchange(reports, {}))
            callbacks_.report(callbacks_.context, 0, devices.front(), HIDReportType::input, 0,
                              report.data(), report.size());
        std::this_thread::sleep_until(deadline);
    }
    std::vector<HIDDeviceRef> copyDevices() const override {
        ++copies;
        return {devices.begin(), devices.end()};
    }
    std::string whyNoDevice() const override { return {}; }

    bool opens = true;
    mutable std::atomic<int> copies{0}; ///< calls of copyDevices()
    HIDMatching matching{};
    std::vector<std::shared_ptr<FakeDevice>> devices = {std::make_shared<FakeDevice>()};
    std::vector<HIDReport> reports;

private:
    HIDCallbacks callbacks_;
    std::atomic<bool> announced_{false};
};

TEST(RepeatingTimer, FallsBackOnItsGridAfterAStallWithoutABurst) {
    const RepeatingTimer::TimePoint start{5s};
    RepeatingTimer timer(start, 10ms);
    // When it is looked at, whether it fires, when it is due next; ms behind the start.
    const struct {
        double now;
        bool fires;
        int due;
    } looks[] = {{9.999, false, 10}, {10, true, 20},     {19, false, 20},   {23, true, 30},
                 {30, true, 40},     {236, true, 240},   {236, false, 240}, {239, false, 240},
                 {240, true, 250},   {250.5, true, 260}, {460, true, 470},  {469.999, false, 470}};
    for (const auto& look : looks) {
        const auto now = start + std::chrono::microseconds(std::lround(look.now * 1000));
        EXPECT_EQ(timer.fire(now), look.fires) << look.now;
        EXPECT_EQ(timer.due(), start + std::chrono::milliseconds(look.due)) << look.now;
    }
}

class Link : public ::testing::Test {
protected:
    Link() { resetSharedState(); }
    ~Link() override { resetSharedState(); }

    FakeManager manager;
};

TEST_F(Link, StartsWithFreshSlotsAndWithoutTouchingTheBus) {
    const std::uint8_t old = 'x';
    IRNameArr.setCharacters(0, {&old, 1});
    const HIDClass link(manager);
    EXPECT_EQ(object, &link);
    EXPECT_EQ(IRNameArr.count(), 0U);
    ASSERT_EQ(isInternalIRArray2.count(), 4U);
    EXPECT_EQ(isInternalIRArray2.at(3), "1");
    EXPECT_EQ(link.HIDManager(), nullptr);
    EXPECT_EQ(manager.matching.VendorID, 0);
}

// The pedal's answer waits before the thread starts; the event tells when it has gone all the way.
TEST_F(Link, FindsThePedalAsksItAndTakesItsAnswer) {
    std::vector<std::uint8_t> allData(79, 'n');
    allData[0] = 0xF7;
    const auto frame = makeFrame(allData);
    for (std::size_t at = 0; at < frame.size(); at += 63) {
        HIDReport report{};
        const std::size_t n = std::min<std::size_t>(63, frame.size() - at);
        report[0] = static_cast<std::uint8_t>(n);
        std::copy_n(frame.begin() + static_cast<std::ptrdiff_t>(at), n, report.begin() + 1);
        manager.reports.push_back(report);
    }
    std::promise<std::int64_t> event;
    {
        HIDClass link(manager);
        link.addObserver([&] { event.set_value(link.KVOValue()); });
        link.OpenDevice();
        EXPECT_EQ(event.get_future().get(), deviceDataReceived);
        EXPECT_EQ(IRNameArr.at(3), std::string(16, 'n'));
        while (manager.devices[0]->accepted < 2)
            std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(manager.matching.VendorID, 0x0483);
    EXPECT_EQ(manager.matching.ProductID, 0x5703);
    EXPECT_EQ(manager.matching.VersionNumber, 200);
    EXPECT_EQ(manager.devices[0]->stream(),
              (std::vector<std::uint8_t>{0xAA, 0x55, 0, 0, 0xFF, 0xFF, //
                                         0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E}));
}

TEST_F(Link, WithoutAServiceTheTimersRunAndTheLossIsTold) {
    manager.opens = false;
    std::promise<void> lost;
    std::atomic<int> events = 0;
    HIDClass link(manager);
    link.addObserver([&] {
        if (++events == 2) // the opening frame and the request both find no device
            lost.set_value();
    });
    link.OpenDevice();
    lost.get_future().get();
    EXPECT_EQ(link.KVOValue(), deviceLost);
}

TEST_F(Link, ConnectHIDTakesTheDeviceAtTheIndex) {
    manager.devices.push_back(std::make_shared<FakeDevice>());
    HIDClass link(manager);
    link.connectHID();
    EXPECT_EQ(HID_Device, nullptr) << "no manager yet";
    link.setHIDManager(&manager);
    deveiceIndex = 1;
    link.connectHID();
    EXPECT_EQ(HID_Device, manager.devices[1]);
    manager.devices.clear();
    link.connectHID();
    EXPECT_EQ(HID_Device, nullptr);
}

// Before the device thread runs, and beside it.
TEST_F(Link, ConnectHIDFromSeveralThreadsLosesNoCall) {
    HIDClass link(manager);
    link.setHIDManager(&manager);
    const auto callFromFourThreads = [&link](int calls) {
        std::vector<std::thread> callers;
        for (int i = 0; i < 4; ++i)
            callers.emplace_back([&link, calls] {
                for (int call = 0; call < calls; ++call)
                    link.connectHID();
            });
        for (std::thread& caller : callers)
            caller.join();
    };
    callFromFourThreads(25);
    EXPECT_EQ(manager.copies, 100);
    link.OpenDevice();
    callFromFourThreads(5);
    EXPECT_EQ(manager.copies, 120);
}

class Probing : public Link {
protected:
    Probing() {
        manager.devices.push_back(std::make_shared<FakeDevice>());
        link.setHIDManager(&manager);
        link.connectHID();
        isDeviceConnent = 1;
    }

    std::function<void()> duringPause = [] {};
    std::chrono::milliseconds paused{0};
    HIDClass link{manager, [this](std::chrono::milliseconds time) {
                      paused += time;
                      duringPause();
                  }};
};

TEST_F(Probing, AsksEachDeviceTwentyTimesInThreePasses) {
    EXPECT_FALSE(link.checkUSBDevice());
    EXPECT_EQ(isDeviceConnent, 0);
    EXPECT_EQ(checkNumber, 3);
    EXPECT_EQ(paused, 120 * 60ms);
    for (const auto& device : manager.devices) {
        ASSERT_EQ(device->reports.size(), 60U);
        EXPECT_EQ(device->reports[0][0], 8);
    }
}

TEST_F(Probing, EndsWhenTheHandshakeHasSucceeded) {
    duringPause = [this] {
        if (manager.devices[1]->reports.size() == 2)
            deviceDidTrue = 1;
    };
    EXPECT_TRUE(link.checkUSBDevice());
    EXPECT_EQ(deveiceIndex, 1);
}

TEST_F(Probing, StaysWithADeviceAfterABadReport) {
    int pauses = 0;
    duringPause = [&] {
        if (++pauses == 1)
            timer = 40; // what deviceReportCallback does
        if (pauses == 200)
            deviceDidTrue = 1;
    };
    EXPECT_TRUE(link.checkUSBDevice());
    EXPECT_EQ(deveiceIndex, 0);
    EXPECT_EQ(manager.devices[0]->reports.size(), 200U);
}

TEST_F(Link, ProbingWorksBesideTheRunningThread) {
    HIDClass link(manager, [](std::chrono::milliseconds) {});
    link.OpenDevice();
    while (isDeviceConnent == 0)
        std::this_thread::sleep_for(1ms);
    link.connectHID();
    EXPECT_FALSE(link.checkUSBDevice());
}

} // namespace
} // namespace cabslot::testing
