// A pedal behind a socket, where the system has such sockets.
#pragma once

#include "device/HIDManager.h"

#include <memory>
#include <string>

namespace cabslot {

/// Empty, or why there are no Unix sockets to find a pedal behind.
std::string whyNoSockets();

/// The service over the socket at `path`; null where whyNoSockets() says why.
std::unique_ptr<HIDManager> makeSocketPedal(const std::string& path);

} // namespace cabslot
