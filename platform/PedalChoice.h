// Selects the pedal that a program uses, from --pedal or the variable CABSLOT_PEDAL.
#pragma once

#include "device/HIDManager.h"

#include <memory>
#include <string>

namespace cabslot {

inline constexpr const char* pedalVariable = "CABSLOT_PEDAL";
inline constexpr const char* defaultPedal = "usb";

/// The choices, as the programs' help lists them.
inline constexpr const char* pedalHelp = R"(Pedals:
  usb         the pedal on USB (the default)
  sim         a simulated pedal inside the program; it remembers its slots
  unix:PATH   a pedal behind a Unix socket, such as cabslot-sim's

)";

/// Empty if `choice` is valid, else what is wrong with it and what would be right.
std::string whatIsWrongWithPedal(const std::string& choice);

/// The service for a valid `choice`; never null. One that is not available never has a device, and
/// its whyNoDevice() says why.
std::unique_ptr<HIDManager> makeHIDManager(const std::string& choice);

} // namespace cabslot
