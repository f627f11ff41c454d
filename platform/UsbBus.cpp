#include "platform/UsbBus.h"

#include "platform/DevicePermission.h"

#include <hidapi.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

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
    case UsbStatus::notPermitted:
        return "the pedal is at " + finding.path + ", but this user may not open it, " +
               whyNotPermitted();
    case UsbStatus::otherRelease:
        return "the pedal at " + finding.path + " has release " + releaseText(finding.release) +
               "; only release " + releaseText(wanted.VersionNumber) + " can be used";
    default:
        return "the pedal at " + finding.path + " cannot be opened: " + finding.systemText +
               "; unplug it and plug it in again";
    }
}

// hidapi does not say why a node cannot be opened in a form that can be relied on; asking again
// without it does.
void findOutWhyClosed(UsbFinding& finding) {
    const int fd = ::open(finding.path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (fd >= 0) {
        ::close(fd);
        finding.systemText = "it does not answer as a HID device";
        return;
    }
    if (errno == EACCES || errno == EPERM)
        finding.status = UsbStatus::notPermitted;
    else
        finding.systemText = std::strerror(errno);
}

} // namespace

void UsbHandleCloser::operator()(hid_device_* device) const {
    ::hid_close(device);
}

std::vector<UsbFinding> findOnUsb(const HIDMatching& wanted) {
    std::vector<UsbFinding> found;
    hid_device_info* const all = ::hid_enumerate(static_cast<std::uint16_t>(wanted.VendorID),
                                                 static_cast<std::uint16_t>(wanted.ProductID));
    for (const hid_device_info* one = all; one != nullptr; one = one->next) {
        const std::string path = one->path;
        const bool known = std::any_of(found.begin(), found.end(),
                                       [&](const UsbFinding& old) { return old.path == path; });
        if (known) // hidapi lists a node once for each of its usages
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

std::vector<UsbFinding> inspectUsb(const HIDMatching& wanted) {
    std::vector<UsbFinding> findings = findOnUsb(wanted);
    for (UsbFinding& finding : findings) {
        if (finding.status == UsbStatus::otherRelease)
            continue;
        finding.handle.reset(::hid_open_path(finding.path.c_str()));
        if (finding.handle)
            finding.status = UsbStatus::ok;
        else
            findOutWhyClosed(finding);
    }
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
            .fix = best->status == UsbStatus::notPermitted ? commandThatPermits() : ""};
}

void leaveUsb() {
    ::hid_exit();
}

} // namespace cabslot
