#include "platform/BuiltInPedal.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

namespace cabslot {

std::unique_ptr<BuiltInPedal> BuiltInPedal::make(const std::string& stateFolder, std::string& why) {
    auto store = simulator::PedalStore::open(stateFolder, why);
    if (!store)
        return nullptr;
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        why = std::string("no socket pair: ") + std::strerror(errno);
        return nullptr;
    }
    return std::unique_ptr<BuiltInPedal>(new BuiltInPedal(*std::move(store), ends[0], ends[1]));
}

BuiltInPedal::BuiltInPedal(simulator::PedalStore store, int pedalSocket, int hostSocket)
    : store_(std::move(store)), pedal_(store_, {}, {}), host_(hostSocket) {
    pedal_.adopt(pedalSocket);
    thread_ = std::thread([this] { pedal_.run(); });
}

BuiltInPedal::~BuiltInPedal() {
    pedal_.stop();
    thread_.join();
}

bool BuiltInPedal::open(const HIDMatching& matching, const HIDCallbacks& callbacks) {
    return host_.open(matching, callbacks);
}

void BuiltInPedal::waitForEvents(TimePoint deadline) {
    host_.waitForEvents(deadline);
}

std::vector<HIDDeviceRef> BuiltInPedal::copyDevices() const {
    return host_.copyDevices();
}

std::string BuiltInPedal::whyNoDevice() const {
    return host_.whyNoDevice();
}

std::string builtInPedalFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    const char* home = std::getenv("HOME");
    std::filesystem::path base;
    if (state != nullptr && std::filesystem::path(state).is_absolute())
        base = state;
    else if (home != nullptr && *home != '\0')
        base = std::filesystem::path(home) / ".local" / "state";
    else
        return {};
    return (base / "cabslot" / "pedal").string();
}

} // namespace cabslot
