// Where the running program is. Each system has its own source file for it.
#pragma once

#include <filesystem>

namespace cabslot {

/// The program's file, with all links followed; wrong if the system does not tell.
std::filesystem::path runningProgram();

} // namespace cabslot
