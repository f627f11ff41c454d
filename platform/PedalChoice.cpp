#include "platform/PedalChoice.h"

#include "base/StateFolder.h"
#include "platform/BuiltInPedal.h"
#include "platform/SocketPedal.h"
#include "platform/UsbHIDManager.h"

#include <string_view>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

constexpr std::string_view usb = "usb";
constexpr std::string_view sim = "sim";
constexpr std::string_view socketPrefix = "unix:";

bool isSocket(std::string_view choice) {
    return choice.starts_with(socketPrefix) && choice.size() > socketPrefix.size();
}

// Used when a service is not available: no device ever comes.
class AbsentHIDManager final : public HIDManager {
public:
    explicit AbsentHIDManager(std::string why) : why_(std::move(why)) {}

    bool open(const HIDMatching& /*matching*/, const HIDCallbacks& /*callbacks*/) override {
        return false;
    }
    void waitForEvents(TimePoint deadline) override { std::this_thread::sleep_until(deadline); }
    std::vector<HIDDeviceRef> copyDevices() const override { return {}; }
    std::string whyNoDevice() const override { return why_; }

private:
    std::string why_;
};

std::unique_ptr<HIDManager> makeBuiltInPedal() {
    const std::string folder = builtInPedalFolder();
    if (folder.empty())
        return std::make_unique<AbsentHIDManager>(
            "the simulated pedal has no folder for its slots: set " + whatNamesStateFolder());
    std::string why;
    if (auto pedal = BuiltInPedal::make(folder, why))
        return pedal;
    return std::make_unique<AbsentHIDManager>("the simulated pedal is not available: " + why);
}

} // namespace

std::string whatIsWrongWithPedal(const std::string& choice) {
    if (isSocket(choice))
        return whyNoSockets();
    if (choice == usb || choice == sim)
        return {};
    return "there is no pedal \"" + choice + "\"; usb, sim and unix:PATH are possible";
}

std::unique_ptr<HIDManager> makeHIDManager(const std::string& choice) {
    if (choice == sim)
        return makeBuiltInPedal();
    if (isSocket(choice))
        return makeSocketPedal(choice.substr(socketPrefix.size()));
    return std::make_unique<UsbHIDManager>();
}

} // namespace cabslot
