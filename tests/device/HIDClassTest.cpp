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
TEST_F(Link, FindsThePedalAndReadsBeforeItSends) {
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
    {
        HIDClass link(manager);
        link.addObserver([&] { event.set_value(link.KVOValue()); });
        link.OpenDevice();
        EXPECT_EQ(event.get_future().get(), deviceDataReceived);
        EXPECT_EQ(namesAtFirstSend.get_future().get(), 4U);
        EXPECT_EQ(IRNameArr.at(3), std::string(16, 'n'));
        asked.get_future().get();
    }
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(manager.matching.VendorID, 0x0483);
    EXPECT_EQ(manager.matching.ProductID, 0x5703);
    EXPECT_EQ(manager.matching.VersionNumber, 200);
    EXPECT_EQ(pedal.stream(), openingFrame + requestFrame);
}

TEST_F(Link, WithoutAServiceTheTimersRunAndTheLossIsReported) {
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

} // namespace
} // namespace cabslot::testing
