// A HID device and service under the test's hand: keeps what is sent, refuses when told to.
#pragma once

#include "device/HIDManager.h"
#include "device/SharedState.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace cabslot::testing {

class FakeDevice final : public HIDDevice {
public:
    bool SetReport(const HIDReport& report) override {
        if (refuses)
            return false;
        reports.push_back(report);
        ++accepted;
        return true;
    }
    void close() override { closed = true; }

    /// The valid bytes of all reports, as one stream.
    std::vector<std::uint8_t> stream() const {
        std::vector<std::uint8_t> bytes;
        for (const HIDReport& report : reports)
            bytes.insert(bytes.end(), report.begin() + 1, report.begin() + 1 + report[0]);
        return bytes;
    }

    std::vector<HIDReport> reports;
    std::atomic<int> accepted{0}; ///< how many, for a thread that must not touch `reports` yet
    bool refuses = false;
    bool closed = false;
};

/// Starts each test with the process-wide values as the program finds them, and one current device.
class DeviceTest : public ::testing::Test {
protected:
    DeviceTest() {
        resetSharedState();
        HID_Device = device;
        isDeviceConnent = 1;
    }
    ~DeviceTest() override { resetSharedState(); }

    std::shared_ptr<FakeDevice> device = std::make_shared<FakeDevice>();
};

/// A whole frame around command and payload, put together by a CRC of the test's own.
inline std::vector<std::uint8_t> makeFrame(const std::vector<std::uint8_t>& commandAndPayload) {
    const std::size_t length = commandAndPayload.size();
    std::vector<std::uint8_t> frame(4 + length);
    frame[0] = 0xAA;
    frame[1] = 0x55;
    frame[2] = static_cast<std::uint8_t>(length);
    frame[3] = static_cast<std::uint8_t>(length >> 8);
    std::copy(commandAndPayload.begin(), commandAndPayload.end(), frame.begin() + 4);
    unsigned crc = 0;
    for (std::size_t i = 2; i < frame.size(); ++i) {
        crc ^= static_cast<unsigned>(frame[i]) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc << 1) ^ ((crc & 0x8000) != 0 ? 0x1021U : 0U);
        crc &= 0xFFFF;
    }
    crc ^= 0xFFFF;
    frame.push_back(static_cast<std::uint8_t>(crc >> 8));
    frame.push_back(static_cast<std::uint8_t>(crc));
    return frame;
}

} // namespace cabslot::testing
