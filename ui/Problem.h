// The window's line on standard error for what goes wrong.
#pragma once

#include <string>

namespace cabslot {

/// Prints "cabslot: " and `line`, with the control characters that a file's name may hold made
/// visible. Any thread.
void printProblem(const std::string& line);

} // namespace cabslot
