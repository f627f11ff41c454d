// The whole device link, on its thread, with a service that the test controls.
#include "tests/support/FakePedal.h"

#include "device/HIDClass.h"
#include "device/RepeatingTimer.h"

#include <future>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

TEST(RepeatingTimer, FallsBackOnItsGridAfterAStallWithoutABurst) {
    const RepeatingTimer::TimePoint start{5s};
    RepeatingTimer timer(start, 10ms);
    // The time, whether the timer fires, when it is next due: microseconds after the start.
    const std::tuple<int, bool, int> looks[] = {{9999, false, 10000},    {10000, true, 20000},
                                                {23000, true, 30000},    {236000, true, 240000},
                                                {239999, false, 240000}, {240000, true, 250000}};
    for (const auto& [now, fires, due] : looks) {
        EXPECT_EQ(timer.fire(start + std::chrono::microseconds(now)), fires) << now;
        EXPECT_EQ(timer.due(), start + std::chrono::microseconds(due)) << now;
    }
}

class Link : public ::testing::Test {
protected:
    Link() { resetSharedState(); }
    ~Link() override { resetSharedState(); }

    FakeManager manager;
    FakeDevice& pedal = *manager.devices[0];
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

// The pedal's answer is there before the first tick, which must read before it sends.
TEST_F(Link, FindsThePedalReadsAndSendsEvery10ms) {
    manager.receive(allDataFrame('1', std::string(64, 'n')));
    std::promise<std::int64_t> event;
    std::promise<std::size_t> namesAtFirstSend;
    std::promise<void> asked;
    pedal.onReport = [&](std::size_t count) {
        if (count == 1)
            namesAtFirstSend.set_value(IRNameArr.count());
        if (count == 2)
            asked.set_value();
    };
    std::vector<HIDManager::TimePoint> deadlines;
    bool told = false;
    bool offGrid = false;
    std::promise<bool> sawTwoTicks; // a busy machine skips some, but not five hundred
    manager.onWait = [&](HIDManager::TimePoint deadline) {
        if (!deadlines.empty() && deadlines.back() == deadline)
            return; // the wait has ended a little early
        deadlines.push_back(deadline);
        const std::size_t n = deadlines.size();
        offGrid |= n > 1 && (deadlines[n - 1] - deadlines[n - 2]) % 10ms != 0ms;
        const bool next = n > 1 && deadlines[n - 1] - deadlines[n - 2] == 10ms;
        if (!told && (next || n == 500)) {
            sawTwoTicks.set_value(next);
            told = true;
        }
    };
    {
        HIDClass link(manager);
        link.addObserver([&] { event.set_value(link.KVOValue()); });
        link.OpenDevice();
        EXPECT_EQ(event.get_future().get(), deviceDataReceived);
        EXPECT_EQ(namesAtFirstSend.get_future().get(), 4U);
        EXPECT_EQ(IRNameArr.at(3), std::string(16, 'n'));
        asked.get_future().get();
        EXPECT_TRUE(sawTwoTicks.get_future().get());
    }
    EXPECT_FALSE(offGrid);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(manager.matching.VendorID, 0x0483);
    EXPECT_EQ(manager.matching.ProductID, 0x5703);
    EXPECT_EQ(manager.matching.VersionNumber, 200);
    EXPECT_EQ(pedal.stream(), openingFrame + requestFrame);
}

TEST_F(Link, WithoutAServiceTheTimersRunAndTheLossIsTold) {
    manager.opens = false;
    std::promise<void> lost;
    std::atomic<int> events = 0;
    ::testing::internal::CaptureStderr();
    HIDClass link(manager);
    link.addObserver([&] {
        if (++events == 2) // the opening frame and the request both find no device
            lost.set_value();
    });
    link.OpenDevice();
    lost.get_future().get();
    EXPECT_EQ(link.KVOValue(), deviceLost);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "IOHIDManagerOpen failed.\n");
}

TEST_F(Link, ConnectHIDTakesTheDeviceAtTheIndex) {
    manager.devices.push_back(std::make_shared<FakeDevice>());
    HIDClass link(manager);
    link.connectHID();
    EXPECT_EQ(HID_Device, nullptr) << "no manager yet";
    link.setHIDManager(&manager);
    deveiceIndex = 1;
    // No call is lost, not even while the device thread runs.
    for (const bool running : {false, true}) {
        if (running)
            link.OpenDevice();
        std::vector<std::thread> callers;
        for (int i = 0; i < 4; ++i)
            callers.emplace_back([&link] {
                for (int call = 0; call < 25; ++call)
                    link.connectHID();
            });
        for (std::thread& caller : callers)
            caller.join();
        EXPECT_EQ(manager.copies.exchange(0), 100);
        EXPECT_TRUE(running || HID_Device == manager.devices[1]);
    }
}

class Probing : public Link {
protected:
    Probing() {
        manager.devices.push_back(std::make_shared<FakeDevice>());
        link.setHIDManager(&manager);
        link.connectHID();
        isDeviceConnent = 1;
    }

    bool check() {
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        const bool found = link.checkUSBDevice();
        printed = ::testing::internal::GetCapturedStdout();
        logged = ::testing::internal::GetCapturedStderr();
        return found;
    }

    std::function<void()> duringPause = [] {};
    std::chrono::milliseconds paused{0};
    std::string printed, logged;
    HIDClass link{manager, [this](std::chrono::milliseconds time) {
                      paused += time;
                      duringPause();
                  }};
};

TEST_F(Probing, AsksEachDeviceTwentyTimesInThreePasses) {
    EXPECT_FALSE(check());
    EXPECT_EQ(isDeviceConnent, 0);
    EXPECT_EQ(checkNumber, 3);
    EXPECT_EQ(paused, 120 * 60ms);
    for (const auto& device : manager.devices) {
        ASSERT_EQ(device->reports.size(), 60U);
        EXPECT_EQ(device->reports[0][0], 8);
    }
    EXPECT_TRUE(printed.starts_with("1 0 0\n")) << printed;
    EXPECT_TRUE(printed.ends_with("1 0 3\n")) << printed;
    EXPECT_EQ(logged, "没有符合要求的USB接口\n");
}

TEST_F(Probing, StaysWithADeviceAfterABadReportUntilTheHandshakeHasSucceeded) {
    int pauses = 0;
    duringPause = [&] {
        if (++pauses == 1)
            timer = 40; // what deviceReportCallback does
        if (pauses == 200)
            deviceDidTrue = 1;
    };
    EXPECT_TRUE(check());
    EXPECT_EQ(deveiceIndex, 0);
    EXPECT_EQ(manager.devices[0]->reports.size(), 200U);
}

} // namespace
} // namespace cabslot::testing
