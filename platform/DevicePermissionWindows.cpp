// Permission on Windows: every user may open a HID device that the system has not reserved, so
// there is nothing to grant; but another program may have exclusive access to the pedal.
#include "platform/DevicePermission.h"

#include "base/PathText.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <system_error>

namespace cabslot {

NodeRefusal whyNodeStaysClosed(const std::string& path) {
    const HANDLE node =
        ::CreateFileW(pathOf(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (node != INVALID_HANDLE_VALUE) {
        ::CloseHandle(node);
        return {.systemText = "it does not answer as a HID device"};
    }
    const DWORD error = ::GetLastError();
    if (error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED)
        return {.systemText = "another program uses it; close that program"};
    return {.systemText = std::system_category().message(static_cast<int>(error))};
}

std::string commandThatPermits() {
    return {};
}

std::string whyNotPermitted() {
    return "since the system keeps it for itself";
}

bool meansLost(int /*error*/) {
    return false; // hidapi does not set errno here: repeated failures decide
}

} // namespace cabslot
