// The simulated pedal inside the program: a pedal on a thread of its own at one end of a socket
// pair, the HID service at the other.
#pragma once

#include "device/HIDManager.h"
#include "platform/SocketHIDManager.h"
#include "simulator/server/PedalServer.h"

#include <memory>
#include <string>
#include <thread>

namespace cabslot {

class BuiltInPedal final : public HIDManager {
public:
    /// A pedal that keeps its slots in `stateFolder`. Null, with the reason in `why`, when that
    /// folder cannot be used.
    static std::unique_ptr<BuiltInPedal> make(const std::string& stateFolder, std::string& why);

    /// Ends the pedal's thread.
    ~BuiltInPedal() override;

    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override;

private:
    BuiltInPedal(simulator::PedalStore store, int pedalSocket, int hostSocket);

    simulator::PedalStore store_;
    simulator::PedalServer pedal_;
    std::thread thread_;
    SocketHIDManager host_;
};

/// Where the built-in pedal keeps its slots: cabslot/pedal in $XDG_STATE_HOME, which is
/// ~/.local/state unless set. Empty when neither that variable nor HOME is set.
std::string builtInPedalFolder();

} // namespace cabslot
