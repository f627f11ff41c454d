// A HID device and a HID service that the test controls, and frames built independently of the code
// under test.
#pragma once

#include "device/DeviceObject.h"
#include "device/HIDManager.h"
#include "device/SharedState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace cabslot::testing {

using Bytes = std::vector<std::uint8_t>;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// A complete frame with this command and payload.
inline Bytes makeFrame(const Bytes& commandAndPayload) {
    const std::size_t length = commandAndPayload.size();
    Bytes frame = Bytes{0xAA, 0x55, static_cast<std::uint8_t>(length),
                        static_cast<std::uint8_t>(length >> 8)} +
                  commandAndPayload;
    unsigned crc = 0;
    for (std::size_t i = 2; i < frame.size(); ++i) {
        crc ^= static_cast<unsigned>(frame[i]) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc << 1) ^ ((crc & 0x8000) != 0 ? 0x1021U : 0U);
        crc &= 0xFFFF;
    }
    crc ^= 0xFFFF;
    return frame + Bytes{static_cast<std::uint8_t>(crc >> 8), static_cast<std::uint8_t>(crc)};
}

inline const Bytes openingFrame = {0xAA, 0x55, 0, 0, 0xFF, 0xFF};
inline const Bytes requestFrame = {0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E};
inline const Bytes confirmationFrame = {0xAA, 0x55, 1, 0, 0xF8, 0xA6, 0xD8};

/// The pedal's all-data frame: 64 bytes of names and the flag of all slots.
inline Bytes allDataFrame(std::uint8_t flag, const std::string& names) {
    Bytes body(1 + 78, 0xEE);
    body[0] = 0xF7;
    body[1 + 2] = flag;
    std::copy(names.begin(), names.end(), body.begin() + 1 + 14);
    return makeFrame(body);
}

inline std::vector<HIDReport> cutIntoReports(const Bytes& stream) {
    std::vector<HIDReport> reports;
    for (std::size_t at = 0; at < stream.size(); at += 63) {
        const std::size_t n = std::min<std::size_t>(63, stream.size() - at);
        HIDReport& report = reports.emplace_back();
        report[0] = static_cast<std::uint8_t>(n);
        std::copy_n(stream.begin() + static_cast<std::ptrdiff_t>(at), n, report.begin() + 1);
    }
    return reports;
}

/// Stores what is sent, or refuses it.
class FakeDevice final : public HIDDevice {
public:
    bool SetReport(const HIDReport& report) override {
        if (refuses)
            return false;
        reports.push_back(report);
        onReport(reports.size());
        return true;
    }
    void close() override { closed = true; }

    /// The valid bytes of all reports, as one stream.
    Bytes stream() const {
        Bytes bytes;
        for (const HIDReport& report : reports)
            bytes.insert(bytes.end(), report.begin() + 1, report.begin() + 1 + report[0]);
        return bytes;
    }

    std::vector<HIDReport> reports;
    std::function<void(std::size_t count)> onReport = [](std::size_t) {
    }; ///< called on the sender's thread
    bool refuses = false;
    bool closed = false;
};

/// Announces `devices` on the first wait, then delivers `incoming` as reports of the first one.
class FakeManager final : public HIDManager {
public:
    bool open(const HIDMatching& wanted, const HIDCallbacks& callbacks) override {
        matching = wanted;
        callbacks_ = callbacks;
        if (!opens)
            unannounced.clear();
        return opens;
    }
    void waitForEvents(TimePoint deadline) override {
        for (const auto& device : std::exchange(unannounced, {}))
            callbacks_.matching(callbacks_.context, 0, this, device);
        std::unique_lock lock(mutex_);
        const std::vector<HIDReport> reports = std::exchange(incoming_, {});
        lock.unlock();
        for (const HIDReport& report : reports)
            callbacks_.report(callbacks_.context, 0, devices.front(), HIDReportType::input, 0,
                              report.data(), report.size());
        onWait(deadline);
        std::this_thread::sleep_until(deadline);
    }
    std::vector<HIDDeviceRef> copyDevices() const override {
        ++copies;
        return {devices.begin(), devices.end()};
    }
    std::string whyNoDevice() const override { return "it is switched off"; }

    /// The first device sends this. Any thread.
    void receive(const Bytes& stream) {
        const std::lock_guard lock(mutex_);
        for (const HIDReport& report : cutIntoReports(stream))
            incoming_.push_back(report);
    }

    bool opens = true;
    mutable std::atomic<int> copies{0}; ///< calls of copyDevices()
    HIDMatching matching{};
    std::vector<std::shared_ptr<FakeDevice>> devices = {std::make_shared<FakeDevice>()};
    std::vector<std::shared_ptr<FakeDevice>> unannounced = devices;
    std::function<void(TimePoint deadline)> onWait = [](TimePoint) {}; ///< device thread

private:
    HIDCallbacks callbacks_;
    std::mutex mutex_;
    std::vector<HIDReport> incoming_;
};

/// Resets the process-wide values, sets one current device, and records the events.
class DeviceTest : public ::testing::Test {
protected:
    DeviceTest() {
        resetSharedState();
        HID_Device = device;
        isDeviceConnent = 1;
        object = &link;
        link.addObserver([this] {
            events.push_back(link.KVOValue());
            onEvent();
        });
    }
    ~DeviceTest() override { resetSharedState(); }

    struct Link final : DeviceObject {
    } link;
    std::shared_ptr<FakeDevice> device = std::make_shared<FakeDevice>();
    std::vector<std::int64_t> events;
    std::function<void()> onEvent = [] {};
};

} // namespace cabslot::testing
