// cabslot's arguments, read before there is a display, so that --help needs none.
#pragma once

#include <optional>
#include <string>

namespace cabslot {

/// Reads the arguments and CABSLOT_PEDAL; `pedal` is then a choice that makeHIDManager() takes.
/// Returns the status to end with at once, if that is what is to be done: 0 after --help or
/// --version, 2 after wrong usage, which has been told on standard error.
std::optional<int> readArguments(int argc, const char* const* argv, std::string& pedal);

} // namespace cabslot
