// The HID service's callbacks: device found, device removed, report received.
//
// All run on the device thread. The parameters are those of HIDCallbacks; `context` is null.
#pragma once

#include "device/HIDManager.h"

#include <cstddef>
#include <cstdint>

namespace cabslot {

/// Makes the device current unless one already is: the first match wins. Raises no event.
void Handle_DeviceMatchingCallback(void* context, int result, void* sender,
                                   const HIDDeviceRef& device);

/// If this is the current device: clears it and raises deviceLost. Resets nothing else. Ignores
/// any other device.
void Handle_DeviceRemovalCallback(void* context, int result, void* sender,
                                  const HIDDeviceRef& device);

/// Appends the report's valid bytes to the ring buffer. Drops reports of other devices and reports
/// that are not 64 bytes long; with the handshake on, drops every report until one has the right
/// identity.
void deviceReportCallback(void* context, int result, const HIDDeviceRef& sender, HIDReportType type,
                          std::uint32_t reportID, const std::uint8_t* report,
                          std::size_t reportLength);

} // namespace cabslot
