// The entry point of cabslotctl: parses the arguments and runs the command.
#pragma once

namespace cabslot {

/// Runs the command named in the arguments. Results go to standard output, messages and progress to
/// standard error. Returns the process's exit status (see ExitStatus).
int runCommandLine(int argc, const char* const* argv);

} // namespace cabslot
