// Permission on Linux: the udev rule that packaging/ installs.
#include "base/SystemError.h"
#include "platform/BundlePath.h"
#include "platform/DevicePermission.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

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

// The rule next to this program, or else its name in the sources.
std::string rulePath() {
    std::error_code failed;
    const std::filesystem::path beside =
        std::filesystem::path(installPrefix()) / "lib/udev/rules.d" / ruleFile;
    if (std::filesystem::exists(beside, failed))
        return beside.string();
    return std::string("packaging/") + ruleFile;
}

// Whether udev itself finds the rule, as after installing the package.
bool ruleIsInstalled() {
    return std::any_of(ruleFolders.begin(), ruleFolders.end(), [](const char* folder) {
        std::error_code failed;
        return std::filesystem::exists(std::filesystem::path(folder) / ruleFile, failed);
    });
}

} // namespace

NodeRefusal whyNodeStaysClosed(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (fd >= 0) {
        ::close(fd);
        return {.systemText = "it does not answer as a HID device"};
    }
    if (errno == EACCES || errno == EPERM)
        return {.notPermitted = true};
    return {.systemText = systemErrorText(errno)};
}

bool meansLost(int error) {
    constexpr std::array gone = {ENODEV, ENXIO, EBADF};
    return std::find(gone.begin(), gone.end(), error) != gone.end();
}

std::string commandThatPermits() {
    std::string apply =
        "sudo udevadm control --reload && sudo udevadm trigger --subsystem-match=hidraw";
    if (ruleIsInstalled())
        return apply;
    return "sudo cp " + quotedForShell(rulePath()) + " /etc/udev/rules.d/ && " + apply;
}

std::string whyNotPermitted() {
    if (ruleIsInstalled())
        return "though the udev rule is installed: unplug the pedal and plug it in again, and use "
               "it from the screen, not from a remote login";
    return std::string("since the udev rule ") + ruleFile + " is not installed";
}

} // namespace cabslot
