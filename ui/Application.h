// The entry point of cabslot, the window.
#pragma once

namespace cabslot {

/// Runs the window until it ends the process, with status 1 if there is no display. Returns only
/// after --help or --version (0) and after wrong usage (2).
int runApplication(int argc, char** argv);

} // namespace cabslot
