// Output reports and the HID service's callbacks. The fuzz seeds cover input reports.
#include "tests/support/FakePedal.h"

#include "device/DataUnpacking.h"
#include "device/HIDCallbacks.h"
#include "device/HIDReports.h"

#include <numeric>

namespace cabslot::testing {
namespace {

class Transport : public DeviceTest {
protected:
    Transport() { std::iota(data.begin(), data.end(), std::uint8_t{1}); }

    void receive(const HIDReport& report) {
        deviceReportCallback(nullptr, 0, device, HIDReportType::input, 0, report.data(),
                             hidReportSize);
    }
    static void plugIn(const HIDDeviceRef& added) {
        Handle_DeviceMatchingCallback(nullptr, 0, nullptr, added);
    }
    static void unplug(const HIDDeviceRef& gone) {
        Handle_DeviceRemovalCallback(nullptr, 0, nullptr, gone);
    }

    std::array<std::uint8_t, 200> data{};
    const std::shared_ptr<FakeDevice> other = std::make_shared<FakeDevice>();
};

TEST_F(Transport, WriteHidCutsIntoReportsAndKeepsOldBytesBehindAPartialOne) {
    EXPECT_EQ(WriteHid(data.data(), 66), 1);
    ASSERT_EQ(device->reports.size(), 2U);
    EXPECT_EQ(device->reports[0][0], 63);
    EXPECT_EQ(device->reports[0][63], 63);
    EXPECT_EQ(device->reports[1][0], 3);
    EXPECT_EQ(device->reports[1][3], 66);
    EXPECT_EQ(device->reports[1][4], 4) << "left over from the report before";
    EXPECT_EQ(WriteHid(data.data(), 0), 1);
}

TEST_F(Transport, WriteHidLooksAtTheConnectionBeforeAPartialReportOnly) {
    isDeviceConnent = 0;
    EXPECT_EQ(WriteHid(data.data(), 126), 1) << "two full reports";
    EXPECT_EQ(WriteHid(data.data(), 10), 0);
    EXPECT_EQ(events, std::vector<std::int64_t>{1});
    isDeviceConnent = 1;
    EXPECT_EQ(WriteHid(data.data() + 20, 1), 1);
    EXPECT_EQ(device->reports[2][10], 10) << "what was not sent was filled in all the same";

    HID_Device = nullptr;
    EXPECT_EQ(WriteHid(data.data(), 127), 0) << "fails at the first full report, without an event";
    HID_Device = device;
    device->refuses = true;
    EXPECT_EQ(WriteHid(data.data(), 127), 0);
    EXPECT_EQ(WriteHid(data.data(), 5), 0);
    EXPECT_EQ(events.size(), 1U) << "a refused report alone is no lost device";
    EXPECT_EQ(device->reports.size(), 3U);
}

TEST_F(Transport, TheFirstMatchIsCurrentUntilItGoes) {
    plugIn(other);
    EXPECT_EQ(HID_Device, device);
    unplug(other);
    EXPECT_TRUE(events.empty());

    bool cleared = false;
    onEvent = [&] { cleared = HID_Device == nullptr && isDeviceConnent == 0; };
    unplug(device);
    EXPECT_EQ(events, std::vector<std::int64_t>{1});
    EXPECT_TRUE(cleared) << "before the event";
    plugIn(other);
    EXPECT_EQ(HID_Device, other);
}

TEST_F(Transport, NothingButTheDeviceIsResetWhenItGoes) {
    HIDReport half{3, 0xAA, 0x55, 1};
    receive(half);
    DUP_Unpack();
    SendStep = 237;
    deviceDidTrue = 1;
    receive({1, 0}); // still in the ring buffer
    unplug(device);
    plugIn(device);
    receive({3, 0xF8, 0xA6, 0xD8});
    CheckMCUInportIR_Finish = 1;
    DUP_Unpack();
    EXPECT_EQ(CheckMCUInportIR_Finish, 0U) << "a frame begun before was completed after";
    EXPECT_EQ(SendStep, 237);
    EXPECT_EQ(deviceDidTrue, 1);
}

} // namespace
} // namespace cabslot::testing
