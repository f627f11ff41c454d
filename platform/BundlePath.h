// Where the programs' resources are.
#pragma once

#include <string>

namespace cabslot {

/// The bundle's folder, without a slash at its end: `share/cabslot` beside the folder of the
/// running program, the same in the build tree and when installed. Resources are in its
/// Contents/Resources.
std::string bundlePath();

} // namespace cabslot
