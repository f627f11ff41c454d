// The HID service: the interface between the device link and whatever carries its reports.
//
// Through it the link is told of devices and reports, sends reports, and waits. The implementation
// (USB, a socket, a simulated pedal) is chosen by the front end and passed in.
//
// Thread: after construction every call is made on the device thread, except whyNoDevice().
#pragma once

#include "base/Pedal.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace cabslot {

/// Bytes of a report, either way, without a report ID (the device uses none).
inline constexpr std::size_t hidReportSize = 64;

using HIDReport = std::array<std::uint8_t, hidReportSize>;

/// One matched device. A reference may outlive the device: sending then fails, closing does
/// nothing.
class HIDDevice {
public:
    virtual ~HIDDevice() = default;

    /// Sends one output report and waits until the bus has taken or refused it: at most about a
    /// second, on USB at most the kernel's five. False: not accepted, or the device is gone.
    virtual bool SetReport(const HIDReport& report) = 0;

    /// Stops using the device; it will report nothing more.
    virtual void close() = 0;
};

/// Null when there is none; two references are equal when they name the same device.
using HIDDeviceRef = std::shared_ptr<HIDDevice>;

/// The values a device must carry to be announced, all three.
struct HIDMatching {
    std::int64_t VendorID;
    std::int64_t ProductID;
    std::int64_t VersionNumber; ///< the device's release number, bcdDevice
};

/// The pedal's.
inline constexpr HIDMatching pedalMatching = {
    .VendorID = pedalVendor, .ProductID = pedalProduct, .VersionNumber = pedalRelease};

enum class HIDReportType { input, output };

/// Where a manager reports to. `context` is handed back as it was given; `result` is 0 for success.
struct HIDCallbacks {
    using Device = void (*)(void* context, int result, void* sender, const HIDDeviceRef& device);
    using Report = void (*)(void* context, int result, const HIDDeviceRef& sender,
                            HIDReportType type, std::uint32_t reportID, const std::uint8_t* report,
                            std::size_t reportLength);

    void* context = nullptr;
    Device matching = nullptr; ///< a device is there, also one that was before open()
    Device removal = nullptr;  ///< an announced device is gone; it reports nothing more
    Report report = nullptr;   ///< an input report of any length, as the device sent it
};

class HIDManager {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~HIDManager() = default;

    /// Starts looking for matching devices. False when the service cannot be had at all; a missing
    /// device is no failure. Callbacks run inside waitForEvents() only.
    virtual bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) = 0;

    /// Makes the callbacks for what has happened, then waits for more until `deadline`. Devices
    /// that were there before open() are announced on the first call, however near the deadline is;
    /// devices that come later are announced also while another is current. Returns at the deadline
    /// even if reports keep coming.
    virtual void waitForEvents(TimePoint deadline) = 0;

    /// The announced devices that are still plugged in, oldest first; also those that were closed.
    virtual std::vector<HIDDeviceRef> copyDevices() const = 0;

    /// Why there is no device, in words that a person can act on; empty when nothing is known.
    /// Any thread.
    virtual std::string whyNoDevice() const = 0;
};

} // namespace cabslot
