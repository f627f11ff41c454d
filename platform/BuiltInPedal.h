// The simulated pedal inside the program: the HID service passes reports directly to and from the
// pedal's code, without a socket or another thread.
#pragma once

#include "device/HIDManager.h"

#include <memory>
#include <string>

namespace cabslot {

class BuiltInDevice;

class BuiltInPedal final : public HIDManager {
public:
    /// A pedal that keeps its slots in `stateFolder`. Null, with the reason in `why`, if the folder
    /// cannot be used.
    static std::unique_ptr<BuiltInPedal> make(const std::string& stateFolder, std::string& why);

    ~BuiltInPedal() override;

    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override;

private:
    explicit BuiltInPedal(std::shared_ptr<BuiltInDevice> device);

    std::shared_ptr<BuiltInDevice> device_;
    HIDCallbacks callbacks_;
    bool announced_ = false;
};

/// The folder where the built-in pedal keeps its slots: cabslot/pedal in the user's state folder.
/// Empty if there is no state folder.
std::string builtInPedalFolder();

} // namespace cabslot
