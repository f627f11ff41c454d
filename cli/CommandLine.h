// cabslotctl: its arguments in, its exit status out.
#pragma once

namespace cabslot {

/// Runs the one command that the arguments name. Results go to standard output, messages and
/// progress to standard error. Returns the process's exit status (see ExitStatus).
int runCommandLine(int argc, const char* const* argv);

} // namespace cabslot
