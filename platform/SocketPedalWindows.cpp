#include "platform/SocketPedal.h"

namespace cabslot {

std::string whyNoSockets() {
    return "unix:PATH is not available on Windows; usb and sim are possible";
}

std::unique_ptr<HIDManager> makeSocketPedal(const std::string& /*path*/,
                                            WhileInUse /*whileInUse*/) {
    return nullptr;
}

} // namespace cabslot
