// Which pedal a program talks to: the value of --pedal or of the variable CABSLOT_PEDAL.
//
//   usb        the pedal on USB
//   sim        the simulated pedal inside the program; it keeps its slots in the user's state
//   folder unix:PATH  the pedal behind a Unix socket, such as cabslot-sim's
#pragma once

#include "device/HIDManager.h"

#include <memory>
#include <string>

namespace cabslot {

inline constexpr const char* pedalVariable = "CABSLOT_PEDAL";
inline constexpr const char* defaultPedal = "usb";

/// Empty if `choice` is one of the above, else what is wrong with it and what would be right.
std::string whatIsWrongWithPedal(const std::string& choice);

/// The service for a good `choice`; never null. One that cannot be had never has a device, and its
/// whyNoDevice() says why.
std::unique_ptr<HIDManager> makeHIDManager(const std::string& choice);

} // namespace cabslot
