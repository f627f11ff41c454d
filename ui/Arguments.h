// Parses cabslot's arguments before there is a display, so that --help needs none.
#pragma once

#include <optional>
#include <string>

namespace cabslot {

struct WindowArguments {
    std::string pedal; ///< a choice that makeHIDManager() accepts
    std::string set;   ///< the set to open; empty: none
};

/// Parses the arguments and CABSLOT_PEDAL.
/// Returns an exit status if the program should end: 0 after --help or --version, 2 after wrong
/// usage, which it has reported on standard error.
std::optional<int> readArguments(int argc, const char* const* argv, WindowArguments& arguments);

} // namespace cabslot
