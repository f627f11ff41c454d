#include "platform/SocketPedal.h"

#include "platform/SocketHIDManager.h"

namespace cabslot {

std::string whyNoSockets() {
    return {};
}

std::unique_ptr<HIDManager> makeSocketPedal(const std::string& path) {
    return std::make_unique<SocketHIDManager>(path);
}

} // namespace cabslot
