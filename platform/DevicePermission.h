// Why the pedal's device node cannot be opened, and what to say to a user who may not open it. Each
// system has its own source file for this.
#pragma once

#include <string>

namespace cabslot {

struct NodeRefusal {
    bool notPermitted = false;
    std::string systemText{}; ///< for any other reason: the system's message
};

/// Opens the node once more to find out why hidapi could not: hidapi itself does not report this
/// reliably.
NodeRefusal whyNodeStaysClosed(const std::string& path);

/// Whether a write that failed with this errno proves that the device is gone. Others need a look
/// at the bus.
bool meansLost(int error);

/// Completes the sentence "this user may not open it, ...": what is missing, or what to do first.
std::string whyNotPermitted();

/// The terminal command that grants permission.
std::string commandThatPermits();

} // namespace cabslot
