#include "platform/PedalChoice.h"

#include "platform/BuiltInPedal.h"
#include "platform/SocketPedal.h"
#include "platform/UsbBus.h"
#include "platform/UsbHIDManager.h"

#include <string_view>
#include <utility>

namespace cabslot {

namespace {

constexpr std::string_view usb = "usb";
constexpr std::string_view sim = "sim";
constexpr std::string_view socketPrefix = "unix:";

bool isSocket(std::string_view choice) {
    return choice.starts_with(socketPrefix) && choice.size() > socketPrefix.size();
}

std::string socketPath(std::string_view choice) {
    return std::string(choice.substr(socketPrefix.size()));
}

} // namespace

std::string whatIsWrongWithPedal(const std::string& choice) {
    if (isSocket(choice))
        return whyNoSockets();
    if (choice == usb || choice == sim)
        return {};
    return "there is no pedal \"" + choice + "\"; usb, sim and unix:PATH are possible";
}

std::unique_ptr<HIDManager> makeHIDManager(const std::string& choice, PedalEvents events) {
    if (choice == sim)
        return std::make_unique<BuiltInPedal>(builtInPedalFolder(), std::move(events.whileInUse),
                                              std::move(events.complain));
    if (isSocket(choice))
        return makeSocketPedal(socketPath(choice), std::move(events.whileInUse));
    return std::make_unique<UsbHIDManager>(std::move(events.whileInUse));
}

std::optional<LockHolder> whoUsesPedal(const std::string& choice) {
    if (choice == sim)
        return holderOf(builtInPedalFolder());
    if (isSocket(choice))
        return holderOf(socketPath(choice));
    std::optional<LockHolder> holder;
    for (const UsbFinding& finding : findOnUsb(pedalMatching)) {
        if (!holder && finding.status == UsbStatus::failing) // matches, and is not opened here
            holder = holderOf(finding.path);
    }
    leaveUsb();
    return holder;
}

} // namespace cabslot
