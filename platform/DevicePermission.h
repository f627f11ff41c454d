// What a user is told who may not open the pedal. Each system has its own source file for it.
#pragma once

#include <string>

namespace cabslot {

/// The end of "this user may not open it, ...": what is missing, or what to do first.
std::string whyNotPermitted();

/// The command for a terminal that puts it right.
std::string commandThatPermits();

} // namespace cabslot
