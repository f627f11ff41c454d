// cabslot: the window as a program.
#pragma once

namespace cabslot {

/// Runs the window until it ends the process, which it also does, with status 1, without a display;
/// returns the exit status otherwise: 2 for wrong usage.
int runApplication(int argc, char** argv);

} // namespace cabslot
