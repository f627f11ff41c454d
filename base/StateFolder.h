// The folder where programs keep state between runs.
#pragma once

#include <string>

namespace cabslot {

/// The user's state folder, UTF-8. POSIX: $XDG_STATE_HOME, by default ~/.local/state; Windows:
/// %LOCALAPPDATA%. Empty if none of these variables is set.
std::string userStateFolder();

/// The environment variables to set if it is empty, for a message.
std::string whatNamesStateFolder();

} // namespace cabslot
