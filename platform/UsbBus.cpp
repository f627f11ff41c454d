#include "platform/UsbBus.h"

#include "platform/BundlePath.h"

#include <hidapi.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace cabslot {

namespace {

constexpr const char* ruleFile = "70-cabslot.rules";
constexpr std::array ruleFolders = {"/etc/udev/rules.d", "/run/udev/rules.d",
                                    "/usr/local/lib/udev/rules.d", "/usr/lib/udev/rules.d",
                                    "/lib/udev/rules.d"};

std::string quotedForShell(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

// The rule beside this program, or else as it is called in the sources.
std::string rulePath() {
    std::error_code failed;
    const std::filesystem::path beside =
        std::filesystem::path(installPrefix()) / "lib/udev/rules.d" / ruleFile;
    if (std::filesystem::exists(beside, failed))
        return beside.string();
    return std::string("packaging/") + ruleFile;
}

// Whether udev finds the rule by itself, as after the package was installed.
bool ruleIsInstalled() {
    return std::any_of(ruleFolders.begin(), ruleFolders.end(), [](const char* folder) {
        std::error_code failed;
        return std::filesystem::exists(std::filesystem::path(folder) / ruleFile, failed);
    });
}

std::string commandThatPermits() {
    const std::string apply =
        "sudo udevadm control --reload && sudo udevadm trigger --subsystem-match=hidraw";
    if (ruleIsInstalled())
        return apply;
    return "sudo cp " + quotedForShell(rulePath()) + " /etc/udev/rules.d/ && " + apply;
}

// What a user who may not open the node is told.
std::string whyNotPermitted() {
    if (ruleIsInstalled())
        return "though the udev rule is installed: unplug the pedal and plug it in again, and use "
               "it from the screen, not from a remote login";
    return std::string("since the udev rule ") + ruleFile + " is not installed";
}

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
