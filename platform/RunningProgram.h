// Locates the running program. Each system has its own source file for this.
#pragma once

#include <filesystem>

namespace cabslot {

/// The program's file, with all links resolved; wrong if the system does not provide it.
std::filesystem::path runningProgram();

} // namespace cabslot
