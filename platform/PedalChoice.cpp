#include "platform/PedalChoice.h"

#include "platform/BuiltInPedal.h"
#include "platform/SocketHIDManager.h"

#include <string_view>

namespace cabslot {

namespace {

constexpr std::string_view usb = "usb";
constexpr std::string_view sim = "sim";
constexpr std::string_view socketPrefix = "unix:";

bool isSocket(std::string_view choice) {
    return choice.starts_with(socketPrefix) && choice.size() > socketPrefix.size();
}

std::unique_ptr<HIDManager> makeBuiltInPedal(std::string& why) {
    const std::string folder = builtInPedalFolder();
    if (folder.empty()) {
        why = "the simulated pedal has no folder for its slots: set HOME or XDG_STATE_HOME";
        return nullptr;
    }
    return BuiltInPedal::make(folder, why);
}

} // namespace

std::string whatIsWrongWithPedal(const std::string& choice) {
    if (choice == usb || choice == sim || isSocket(choice))
        return {};
    return "there is no pedal \"" + choice + "\"; usb, sim and unix:PATH are possible";
}

std::unique_ptr<HIDManager> makeHIDManager(const std::string& choice, std::string& why) {
    if (choice == usb) {
        why = "this version cannot talk to a pedal on USB yet; try --pedal sim or "
              "--pedal unix:PATH";
        return nullptr;
    }
    if (choice == sim)
        return makeBuiltInPedal(why);
    return std::make_unique<SocketHIDManager>(choice.substr(socketPrefix.size()));
}

} // namespace cabslot
