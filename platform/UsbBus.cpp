#include "platform/UsbBus.h"

#include "platform/DevicePermission.h"

#include <hidapi.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

std::string releaseText(std::int64_t release) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%d (0x%04X)", static_cast<int>(release),
                  static_cast<unsigned>(release));
    return text.data();
}

std::string messageFor(const UsbFinding& finding, const HIDMatching& wanted) {
    switch (finding.status) {
    case UsbStatus::ok:
        return "the pedal is at " + finding.path + " and can be used";
    case UsbStatus::inUse:
        return inUseText(finding.path, finding.holder);
    case UsbStatus::notPermitted:
        return "the pedal is at " + finding.path + ", but this user may not open it, " +
               whyNotPermitted();
    case UsbStatus::otherRelease:
        return "the pedal at " + finding.path + " has release " + releaseText(finding.release) +
               "; only release " + releaseText(wanted.VersionNumber) + " can be used";
    case UsbStatus::noService:
        return "the USB service is not available: hidapi does not start; restart the computer and "
               "try again";
    default:
        return "the pedal at " + finding.path + " cannot be opened: " + finding.systemText +
               "; unplug it and plug it in again";
    }
}

} // namespace

void UsbHandleCloser::operator()(hid_device_* device) const {
    ::hid_close(device);
}

bool joinUsb() {
    return ::hid_init() == 0;
}

std::vector<UsbFinding> findOnUsb(const HIDMatching& wanted) {
    std::vector<UsbFinding> found;
    if (!joinUsb()) {
        found.emplace_back().status = UsbStatus::noService;
        return found;
    }
    hid_device_info* const all = ::hid_enumerate(static_cast<std::uint16_t>(wanted.VendorID),
                                                 static_cast<std::uint16_t>(wanted.ProductID));
    for (const hid_device_info* one = all; one != nullptr; one = one->next) {
        if (one->path == nullptr) // the node vanished during the scan
            continue;
        const std::string path = one->path;
        const bool known = std::any_of(found.begin(), found.end(),
                                       [&](const UsbFinding& old) { return old.path == path; });
        if (known) // hidapi lists a node once per usage
            continue;
        UsbFinding& finding = found.emplace_back();
        finding.path = path;
        finding.release = one->release_number;
        if (finding.release != wanted.VersionNumber)
            finding.status = UsbStatus::otherRelease;
    }
    ::hid_free_enumeration(all);
    return found;
}

void openOnUsb(UsbFinding& finding) {
    if (finding.status != UsbStatus::failing)
        return;
    LockAttempt attempt = lockPedal(finding.path);
    if (attempt.holder) {
        finding.status = UsbStatus::inUse;
        finding.holder = *attempt.holder;
        return;
    }
    finding.handle.reset(::hid_open_path(finding.path.c_str()));
    if (finding.handle) {
        finding.status = UsbStatus::ok;
        finding.lock = std::move(attempt.lock);
        return;
    }
    NodeRefusal refusal = whyNodeStaysClosed(finding.path);
    finding.systemText = std::move(refusal.systemText);
    if (refusal.notPermitted)
        finding.status = UsbStatus::notPermitted;
}

std::vector<UsbFinding> inspectUsb(const HIDMatching& wanted) {
    std::vector<UsbFinding> findings = findOnUsb(wanted);
    for (UsbFinding& finding : findings)
        openOnUsb(finding);
    return findings;
}

UsbVerdict verdictOn(const std::vector<UsbFinding>& findings, const HIDMatching& wanted) {
    const auto best = std::min_element(
        findings.begin(), findings.end(),
        [](const UsbFinding& a, const UsbFinding& b) { return a.status < b.status; });
    if (best == findings.end())
        return {.status = UsbStatus::noPedal,
                .path = {},
                .release = 0,
                .message = "no pedal was found on USB: plug it in and switch it on",
                .fix = {}};
    return {.status = best->status,
            .path = best->path,
            .release = best->release,
            .message = messageFor(*best, wanted),
            .fix = best->status == UsbStatus::notPermitted ? commandThatPermits() : "",
            .holder = best->holder};
}

void leaveUsb() {
    ::hid_exit();
}

} // namespace cabslot
