// The pedal on USB: where it is, whether it can be used, and if not, why.
//
// The HID service takes the opened devices out of the findings; the doctor command shows the
// verdict.
//
// Thread: hidapi keeps global state without a lock; one thread of the process at a time.
#pragma once

#include "device/HIDManager.h"

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

/// From the best news to the worst.
enum class UsbStatus {
    ok,
    notPermitted,
    failing,
    otherRelease,
    noPedal,   ///< no node, so of a verdict only
    noService, ///< hidapi does not start; stands alone, for no node
};

/// One hidraw node of a device with the right vendor and product.
struct UsbFinding {
    std::string path; ///< such as /dev/hidraw0
    std::uint16_t release = 0;
    UsbStatus status = UsbStatus::failing;
    std::string systemText; ///< failing: the system's own words
    UsbHandle handle;       ///< ok: the device, open
};

/// Starts hidapi, once or more. False: the USB service cannot be had.
bool joinUsb();

/// The nodes with the wanted vendor and product, of any release, each path once. Opens nothing:
/// the status is otherRelease or still open (failing). Takes milliseconds.
std::vector<UsbFinding> findOnUsb(const HIDMatching& wanted);

/// Opens the node if its status is failing, and sets the status to what comes of it.
void openOnUsb(UsbFinding& finding);

/// Finds the nodes and opens those that match in all three.
std::vector<UsbFinding> inspectUsb(const HIDMatching& wanted);

/// The findings in one sentence.
struct UsbVerdict {
    UsbStatus status = UsbStatus::noPedal;
    std::string path; ///< of the finding that decided; empty without one
    std::uint16_t release = 0;
    std::string message; ///< what was found and what a person can do
    std::string fix;     ///< notPermitted: the one command that helps; else empty
};

UsbVerdict verdictOn(const std::vector<UsbFinding>& findings, const HIDMatching& wanted);

/// Gives back what hidapi holds for the process. Every handle must be closed by then.
void leaveUsb();

} // namespace cabslot
