// Where programs keep what they should still know tomorrow.
#pragma once

#include <string>

namespace cabslot {

/// The user's folder for state: $XDG_STATE_HOME, which is ~/.local/state unless set. Empty when
/// neither that variable nor HOME is set.
std::string userStateFolder();

} // namespace cabslot
