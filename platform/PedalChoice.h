// Selects the pedal that a program uses, from --pedal or the variable CABSLOT_PEDAL.
#pragma once

#include "device/HIDManager.h"
#include "platform/PedalLock.h"

#include <functional>
#include <memory>
#include <optional>
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

/// What the service reports to a front end. Both are called on the device thread.
struct PedalEvents {
    WhileInUse whileInUse{}; ///< empty: it does not wait for another program
    std::function<void(const std::string& why)> complain{}; ///< the simulated pedal cannot store
};

/// The service for a valid `choice`; never null. One that is not available never has a device, and
/// its whyNoDevice() says why.
std::unique_ptr<HIDManager> makeHIDManager(const std::string& choice, PedalEvents events = {});

/// The program that is connected to that pedal now. Main thread, before the service is opened.
std::optional<LockHolder> whoUsesPedal(const std::string& choice);

} // namespace cabslot
