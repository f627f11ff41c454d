#include "device/HIDCallbacks.h"

#include "device/DeviceObject.h"
#include "device/HIDReports.h"
#include "device/ReceiveBuffer.h"
#include "device/SharedState.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace cabslot {

namespace {

// Identity fields of an input report, as offsets in the report.
constexpr std::size_t identityOffset = 6;
constexpr std::size_t versionOffset = 45;
constexpr std::size_t modelOffset = 59;

constexpr std::string_view identity = "VEX_Tombra";
constexpr std::string_view firmwareVersion = "V1.0.0";
constexpr char modelWithVersionCheck = 'A';

// The value that checkUSBDevice's count gets when a report could not be used.
constexpr std::int32_t timerAfterBadReport = 40;

void passOn(const std::uint8_t* report) {
    // n is not checked, but a report carries no more than 63 bytes.
    const std::size_t n = std::min<std::size_t>(report[0], reportDataSize);
    putRX_buffer(report + 1, static_cast<std::uint32_t>(n));
}

bool sameCharacter(std::uint8_t received, char expected) {
    std::printf("%c: %c\n", received, expected);
    return received == static_cast<std::uint8_t>(expected);
}

bool identityMatches(const std::uint8_t* report) {
    for (std::size_t i = 0; i < identity.size(); ++i) {
        deviceTrue = sameCharacter(report[identityOffset + i], identity[i]) ? 1 : 0;
        if (deviceTrue == 0)
            return false;
    }
    return true;
}

// Only model 'A' has its version compared, but all six pairs are printed.
bool versionAccepted(const std::uint8_t* report) {
    if (static_cast<char>(report[modelOffset]) != modelWithVersionCheck)
        return true;
    bool accepted = true;
    for (std::size_t i = 0; i < firmwareVersion.size(); ++i) {
        if (!sameCharacter(report[versionOffset + i], firmwareVersion[i]))
            accepted = false;
    }
    return accepted;
}

// -1 if the device is not in the list.
std::int32_t indexIn(const std::vector<HIDDeviceRef>& devices, const HIDDeviceRef& device) {
    const auto found = std::find(devices.begin(), devices.end(), device);
    return found == devices.end() ? -1 : static_cast<std::int32_t>(found - devices.begin());
}

void shakeHands(const std::uint8_t* report) {
    if (!identityMatches(report))
        return;
    const auto devices = object == nullptr ? std::vector<HIDDeviceRef>{} : object->deviceRefs();
    deveiceIndex = indexIn(devices, HID_Device);
    deviceModel = static_cast<char>(report[modelOffset]);
    // A wrong version is recorded, but the device is accepted anyway.
    isVersionTrue = versionAccepted(report) ? 1 : 0;
    deviceDidTrue = 1;
    for (const HIDDeviceRef& device : devices) {
        if (device != HID_Device)
            device->close();
    }
    passOn(report);
}

} // namespace

void Handle_DeviceMatchingCallback(void* /*context*/, int /*result*/, void* /*sender*/,
                                   const HIDDeviceRef& device) {
    if (isDeviceConnent != 0)
        return;
    HID_Device = device;
    isDeviceConnent = 1;
}

void Handle_DeviceRemovalCallback(void* /*context*/, int /*result*/, void* /*sender*/,
                                  const HIDDeviceRef& device) {
    if (device != HID_Device)
        return;
    HID_Device = nullptr;
    isDeviceConnent = 0;
    raiseDeviceEvent(deviceLost);
}

void deviceReportCallback(void* /*context*/, int /*result*/, const HIDDeviceRef& sender,
                          HIDReportType /*type*/, std::uint32_t /*reportID*/,
                          const std::uint8_t* report, std::size_t reportLength) {
    if (reportLength != hidReportSize || sender != HID_Device) {
        timer = timerAfterBadReport;
        return;
    }
    if (HIDDeviceID_int != pedalMatching.ProductID || deviceDidTrue == 1)
        passOn(report);
    else
        shakeHands(report);
}

} // namespace cabslot
