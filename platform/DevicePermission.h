// Why the pedal's device node stays closed, and what a user is told who may not open it. Each
// system has its own source file for it.
#pragma once

#include <string>

namespace cabslot {

struct NodeRefusal {
    bool notPermitted = false;
    std::string systemText{}; ///< unless that is the reason: the system's own words
};

/// Opens the node once more to learn why hidapi could not: hidapi itself does not say so in a form
/// that can be relied on.
NodeRefusal whyNodeStaysClosed(const std::string& path);

/// Whether a write that failed with this errno tells for certain that the device is gone.
bool meansLost(int error);

/// The end of "this user may not open it, ...": what is missing, or what to do first.
std::string whyNotPermitted();

/// The command for a terminal that puts it right.
std::string commandThatPermits();

} // namespace cabslot
