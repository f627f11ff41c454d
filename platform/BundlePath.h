// Where the programs' files are, found from the running program, so that nothing is configured. It
// is the same in the build tree and when installed.
#pragma once

#include <string>

namespace cabslot {

/// The folder above the running program's, without a slash at its end.
std::string installPrefix();

/// The bundle's folder, `share/cabslot` in the prefix. Resources are in its Contents/Resources.
std::string bundlePath();

} // namespace cabslot
