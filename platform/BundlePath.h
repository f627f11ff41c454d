// Where the programs' files are, located from the running program, so that nothing needs
// configuring. The layout is the same in the build tree and when installed.
#pragma once

#include <string>

namespace cabslot {

/// The parent of the running program's folder, without a trailing slash.
std::string installPrefix();

/// The bundle's folder, `share/cabslot` in the prefix. Resources are in its Contents/Resources.
std::string bundlePath();

} // namespace cabslot
