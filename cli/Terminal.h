// System-specific properties of the terminal. Each system has its own source file for this.
#pragma once

#include <cstddef>

namespace cabslot {

/// Makes standard output and standard error pass UTF-8 text and bytes unchanged. Call it once,
/// before any output.
void prepareStreams();

bool standardErrorIsTerminal();

/// The width of the terminal at standard output; 0 if there is none, or if it cannot show Braille
/// patterns.
std::size_t columnsForBraille();

} // namespace cabslot
