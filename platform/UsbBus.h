// Finds the pedal on USB, and reports whether it can be used, and if not, why.
//
// The HID service takes the opened devices from the findings; the doctor command shows the
// verdict.
//
// Thread: hidapi has global state without a lock; only one thread of the process at a time.
#pragma once

#include "device/HIDManager.h"
#include "platform/PedalLock.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct hid_device_; // hidapi's device

namespace cabslot {

struct UsbHandleCloser {
    void operator()(hid_device_* device) const;
};
using UsbHandle = std::unique_ptr<hid_device_, UsbHandleCloser>;

/// A verdict is the first of these that a finding has.
enum class UsbStatus {
    inUse, ///< by another program, which has every pedal that it could get
    ok,
    notPermitted,
    failing,
    otherRelease,
    noPedal,   ///< there is no node; only in a verdict
    noService, ///< hidapi does not start; then the only finding
};

/// A hidraw node of a device with the right vendor and product.
struct UsbFinding {
    std::string path; ///< such as /dev/hidraw0
    std::uint16_t release = 0;
    UsbStatus status = UsbStatus::failing;
    std::string systemText; ///< failing: the system's message
    LockHolder holder{};    ///< inUse: that program
    std::unique_ptr<PedalLock>
        lock;         ///< ok: no other program may open it; null if locking is not possible
    UsbHandle handle; ///< ok: the device, open
};

/// Starts hidapi; may be called again. False: the USB service is not available.
bool joinUsb();

/// The nodes with the wanted vendor and product, of any release, each path once. Opens nothing: the
/// status is otherRelease, or failing until openOnUsb() runs. Takes milliseconds.
std::vector<UsbFinding> findOnUsb(const HIDMatching& wanted);

/// If the status is failing, tries to lock and open the node and updates the status.
void openOnUsb(UsbFinding& finding);

/// Finds the nodes and opens those that match in vendor, product and release.
std::vector<UsbFinding> inspectUsb(const HIDMatching& wanted);

/// The findings summed up in one sentence.
struct UsbVerdict {
    UsbStatus status = UsbStatus::noPedal;
    std::string path; ///< of the deciding finding; empty if there is none
    std::uint16_t release = 0;
    std::string message; ///< what was found and what the user can do
    std::string fix;     ///< notPermitted: the one command that helps; else empty
    LockHolder holder{}; ///< inUse: that program
};

UsbVerdict verdictOn(const std::vector<UsbFinding>& findings, const HIDMatching& wanted);

/// Releases hidapi's global state. Every handle must be closed before.
void leaveUsb();

} // namespace cabslot
