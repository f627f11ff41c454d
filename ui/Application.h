// cabslot: the window as a program.
#pragma once

namespace cabslot {

/// Runs the window until it ends the process; returns the exit status otherwise: 1
/// without a display, 2 for wrong usage.
int runApplication(int argc, char** argv);

} // namespace cabslot
