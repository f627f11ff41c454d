// What the HID service calls: a device came, a device went, a report arrived.
//
// All run on the device thread. The parameters are those of HIDCallbacks; `context` is null.
#pragma once

#include "device/HIDManager.h"

#include <cstddef>
#include <cstdint>

namespace cabslot {

/// Makes the device current unless there is one; the first match wins. Raises nothing.
void Handle_DeviceMatchingCallback(void* context, int result, void* sender,
                                   const HIDDeviceRef& device);

/// If it is the current device: there is none from now on, and deviceLost is raised. Nothing else
/// is reset. Any other device is ignored.
void Handle_DeviceRemovalCallback(void* context, int result, void* sender,
                                  const HIDDeviceRef& device);

/// Puts the report's valid bytes into the ring buffer. Reports of another device, or of another
/// length than 64, are dropped. With the handshake on, so are all reports until one shows the right
/// identity.
void deviceReportCallback(void* context, int result, const HIDDeviceRef& sender, HIDReportType type,
                          std::uint32_t reportID, const std::uint8_t* report,
                          std::size_t reportLength);

} // namespace cabslot
