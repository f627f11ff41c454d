// What only the system knows of the terminal. Each system has its own source file for it.
#pragma once

#include <cstddef>

namespace cabslot {

/// Lets UTF-8 text and bytes through standard output and standard error as they are. To be called
/// once, first of all.
void prepareStreams();

bool standardErrorIsTerminal();

/// How wide the terminal at standard output is; 0 when there is none, or none that can show Braille
/// patterns.
std::size_t columnsForBraille();

} // namespace cabslot
