#include "platform/SocketPedal.h"

#include "platform/SocketHIDManager.h"

#include <utility>

namespace cabslot {

std::string whyNoSockets() {
    return {};
}

std::unique_ptr<HIDManager> makeSocketPedal(const std::string& path, WhileInUse whileInUse) {
    return std::make_unique<SocketHIDManager>(path, std::move(whileInUse));
}

} // namespace cabslot
