// The HID service: the interface between the device link and the transport for its reports.
//
// The link uses it to learn of devices and reports, to send reports, and to wait. The front end
// chooses the implementation (USB, a socket, a simulated pedal) and passes it in.
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

/// Bytes in a report, either way, without a report ID (the device uses none).
inline constexpr std::size_t hidReportSize = 64;

using HIDReport = std::array<std::uint8_t, hidReportSize>;

/// A matched device. A reference may outlive the device: sending then fails and closing does
/// nothing.
class HIDDevice {
public:
    virtual ~HIDDevice() = default;

    /// Sends one output report and waits until the bus has accepted or refused it: about a second
    /// at most, on USB the kernel's five. False: not accepted, or the device is gone.
    virtual bool SetReport(const HIDReport& report) = 0;

    /// Stops using the device; no more reports come from it.
    virtual void close() = 0;
};

/// Null when there is none; two references are equal when they name the same device.
using HIDDeviceRef = std::shared_ptr<HIDDevice>;

/// The values, all three, that a device must have to be announced.
struct HIDMatching {
    std::int64_t VendorID;
    std::int64_t ProductID;
    std::int64_t VersionNumber; ///< the device's release number, bcdDevice
};

/// Matches the pedal.
inline constexpr HIDMatching pedalMatching = {
    .VendorID = pedalVendor, .ProductID = pedalProduct, .VersionNumber = pedalRelease};

enum class HIDReportType { input, output };

/// Where a manager reports events. `context` is passed back unchanged; `result` is 0 for success.
struct HIDCallbacks {
    using Device = void (*)(void* context, int result, void* sender, const HIDDeviceRef& device);
    using Report = void (*)(void* context, int result, const HIDDeviceRef& sender,
                            HIDReportType type, std::uint32_t reportID, const std::uint8_t* report,
                            std::size_t reportLength);

    void* context = nullptr;
    Device matching = nullptr; ///< a device was found, possibly before open()
    Device removal = nullptr;  ///< an announced device is gone; no more reports come from it
    Report report = nullptr;   ///< an input report of any length, as the device sent it
};

class HIDManager {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~HIDManager() = default;

    /// Starts looking for matching devices. False if the service is not available at all; a missing
    /// device is not a failure. Callbacks run only inside waitForEvents().
    virtual bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) = 0;

    /// Runs the callbacks for what has happened, then waits for more until `deadline`. The first
    /// call announces devices that were present before open(), even if the deadline is near. Later
    /// devices are announced too, even while another is current. Returns at the deadline even if
    /// reports keep coming.
    virtual void waitForEvents(TimePoint deadline) = 0;

    /// The announced devices that are still plugged in, oldest first, including closed ones.
    virtual std::vector<HIDDeviceRef> copyDevices() const = 0;

    /// Why there is no device, in words that a user can act on; empty if nothing is known.
    /// Any thread.
    virtual std::string whyNoDevice() const = 0;
};

} // namespace cabslot
