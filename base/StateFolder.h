// Where programs keep what they should still know tomorrow.
#pragma once

#include <string>

namespace cabslot {

/// The user's folder for state, UTF-8. POSIX: $XDG_STATE_HOME, which is ~/.local/state unless set;
/// Windows: %LOCALAPPDATA%. Empty when no variable names it.
std::string userStateFolder();

/// The environment variables to set when it is empty, for a message.
std::string whatNamesStateFolder();

} // namespace cabslot
