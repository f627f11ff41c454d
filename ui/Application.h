// The entry point of cabslot, the window.
#pragma once

namespace cabslot {

/// Runs the window until it ends the process. Returns only on errors: 1 without a display, 2 for
/// wrong usage.
int runApplication(int argc, char** argv);

} // namespace cabslot
