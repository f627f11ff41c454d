// A pedal behind a Unix socket, on systems that have them.
#pragma once

#include "device/HIDManager.h"
#include "platform/PedalLock.h"

#include <memory>
#include <string>

namespace cabslot {

/// Empty, or why there are no Unix sockets on this system.
std::string whyNoSockets();

/// The service for the socket at `path`; null if whyNoSockets() is not empty.
std::unique_ptr<HIDManager> makeSocketPedal(const std::string& path, WhileInUse whileInUse);

} // namespace cabslot
