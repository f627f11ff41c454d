// Reports out, and the callbacks of the HID service.
#include "tests/support/FakePedal.h"

#include "device/DeviceObject.h"
#include "device/HIDCallbacks.h"
#include "device/HIDReports.h"

#include <numeric>

namespace cabslot::testing {
namespace {

class TestObject final : public DeviceObject {};

class Transport : public DeviceTest {
protected:
    Transport() {
        object = &events;
        events.addObserver([this] { seen.push_back(events.KVOValue()); });
        std::iota(data.begin(), data.end(), std::uint8_t{1});
    }

    void receive(const HIDReport& report, std::size_t size = hidReportSize) {
        deviceReportCallback(nullptr, 0, device, HIDReportType::input, 0, report.data(), size);
    }

    void unplug(const HIDDeviceRef& gone) {
        Handle_DeviceRemovalCallback(nullptr, 0, nullptr, gone);
    }

    TestObject events;
    std::vector<std::int64_t> seen;
    std::array<std::uint8_t, 200> data{};
};

TEST_F(Transport, WriteHidCutsIntoReportsAndKeepsOldBytesBehindAPartialOne) {
    EXPECT_EQ(WriteHid(data.data(), 66), 1);
    ASSERT_EQ(device->reports.size(), 2U);
    EXPECT_EQ(device->reports[0][0], 63);
    EXPECT_EQ(device->reports[0][63], 63);
    EXPECT_EQ(device->reports[1][0], 3);
    EXPECT_EQ(device->reports[1][3], 66);
    EXPECT_EQ(device->reports[1][4], 4) << "left over from the report before, on purpose";
}

TEST_F(Transport, WriteHidLooksAtTheConnectionBeforeAPartialReportOnly) {
    isDeviceConnent = 0;
    EXPECT_EQ(WriteHid(data.data(), 126), 1) << "two full reports";
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(WriteHid(data.data(), 10), 0);
    EXPECT_EQ(seen, std::vector<std::int64_t>{1});
    isDeviceConnent = 1;
    EXPECT_EQ(WriteHid(data.data() + 20, 1), 1);
    EXPECT_EQ(device->reports[2][10], 10)
        << "the report that was not sent was filled in all the same";

    HID_Device = nullptr;
    EXPECT_EQ(WriteHid(data.data(), 127), 0) << "fails at the first full report, without an event";
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(WriteHid(data.data(), 0), 1);
}

TEST_F(Transport, WriteHidStopsAtARefusedReport) {
    device->refuses = true;
    EXPECT_EQ(WriteHid(data.data(), 127), 0);
    EXPECT_EQ(WriteHid(data.data(), 5), 0);
    EXPECT_TRUE(device->reports.empty());
    EXPECT_TRUE(seen.empty()) << "a refused report alone is no lost device";
}

TEST_F(Transport, ReportsPassTheirValidBytesOnly) {
    HIDReport report{};
    std::iota(report.begin(), report.end(), std::uint8_t{0});
    struct Row {
        std::uint8_t n;
        std::uint32_t passed;
    };
    for (const Row row : {Row{0, 0}, Row{1, 1}, Row{63, 63}, Row{64, 63}, Row{255, 63}}) {
        rx_buffer_count = rx_buffer_readp = rx_buffer_writep = 0;
        report[0] = row.n;
        receive(report);
        EXPECT_EQ(rx_buffer_count, row.passed) << int{row.n};
    }
    EXPECT_EQ(rx_buffer[62], 63);
}

TEST_F(Transport, ForeignAndOddReportsAreDropped) {
    const HIDReport report{5, 1, 2, 3, 4, 5};
    receive(report, 40);
    EXPECT_EQ(timer, 40);
    timer = 0;
    const auto other = std::make_shared<FakeDevice>();
    deviceReportCallback(nullptr, 0, other, HIDReportType::input, 0, report.data(), hidReportSize);
    EXPECT_EQ(timer, 40);
    EXPECT_EQ(rx_buffer_count, 0U);
}

TEST_F(Transport, TheFirstMatchIsCurrentUntilItGoes) {
    const auto other = std::make_shared<FakeDevice>();
    Handle_DeviceMatchingCallback(nullptr, 0, nullptr, other);
    EXPECT_EQ(HID_Device, device);
    unplug(other);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(isDeviceConnent, 1);

    unplug(device);
    EXPECT_EQ(HID_Device, nullptr);
    EXPECT_EQ(isDeviceConnent, 0);
    EXPECT_EQ(seen, std::vector<std::int64_t>{1});

    Handle_DeviceMatchingCallback(nullptr, 0, nullptr, other);
    EXPECT_EQ(HID_Device, other);
}

class Handshake : public Transport {
protected:
    Handshake() { HIDDeviceID_int = 22275; }

    static HIDReport identityReport(char model, const std::string& version) {
        HIDReport report{63};
        const std::string identity = "VEX_Tombra";
        std::copy(identity.begin(), identity.end(), report.begin() + 6);
        std::copy(version.begin(), version.end(), report.begin() + 45);
        report[59] = static_cast<std::uint8_t>(model);
        return report;
    }
};

TEST_F(Handshake, DropsEverythingBeforeTheIdentity) {
    HIDReport wrong = identityReport('A', "V1.0.0");
    wrong[15] = 'b';
    receive(wrong);
    EXPECT_EQ(rx_buffer_count, 0U);
    EXPECT_EQ(deviceTrue, 0);
    EXPECT_EQ(deviceDidTrue, 0);

    receive(identityReport('A', "V1.0.0"));
    EXPECT_EQ(deviceTrue, 1);
    EXPECT_EQ(deviceDidTrue, 1);
    EXPECT_EQ(rx_buffer_count, 63U) << "the identity itself is passed on";
    receive(wrong);
    EXPECT_EQ(rx_buffer_count, 126U) << "once known, nothing is compared";
}

TEST_F(Handshake, OnlyModelAHasItsVersionChecked) {
    struct Row {
        char model;
        const char* version;
        int accepted;
    };
    for (const Row& row : {Row{'A', "V1.0.0", 1}, Row{'A', "V1.0.1", 0}, Row{'B', "xxxxxx", 1}}) {
        deviceDidTrue = 0;
        receive(identityReport(row.model, row.version));
        EXPECT_EQ(isVersionTrue, row.accepted) << row.model << row.version;
        EXPECT_EQ(deviceDidTrue, 1) << "a wrong version is accepted all the same";
        EXPECT_EQ(deviceModel, row.model);
    }
}

TEST_F(Handshake, ClosesTheOtherDevices) {
    const auto first = std::make_shared<FakeDevice>();
    const auto third = std::make_shared<FakeDevice>();
    events.setDeviceRefs({first, device, third});
    receive(identityReport('B', ""));
    EXPECT_EQ(deveiceIndex, 1);
    EXPECT_TRUE(first->closed);
    EXPECT_TRUE(third->closed);
    EXPECT_FALSE(device->closed);
}

} // namespace
} // namespace cabslot::testing
