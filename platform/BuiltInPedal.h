// The simulated pedal inside the program: the HID service passes reports directly to and from the
// pedal's code, without a socket or another thread.
#pragma once

#include "device/HIDManager.h"
#include "platform/NoDeviceReason.h"
#include "platform/PedalLock.h"

#include <functional>
#include <memory>
#include <string>

namespace cabslot {

class BuiltInDevice;

class BuiltInPedal final : public HIDManager {
public:
    /// Receives, on the device thread, why the pedal could not store what it was sent.
    using Complain = std::function<void(const std::string& why)>;

    /// A pedal that keeps its slots in `folder`, which it creates if necessary. Without a usable
    /// folder there is no device, and whyNoDevice() says why.
    explicit BuiltInPedal(std::string folder, WhileInUse whileInUse = {}, Complain complain = {});
    ~BuiltInPedal() override;

    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override { return whyNoDevice_.text(); }

private:
    void plugIn();

    std::string folder_;
    WhileInUse whileInUse_;
    Complain complain_;
    HIDCallbacks callbacks_;
    TimePoint nextLook_ = TimePoint::min(); ///< when to try again to lock the folder
    std::shared_ptr<BuiltInDevice> device_; ///< null until the folder is locked and read
    NoDeviceReason whyNoDevice_;
};

/// The folder where the built-in pedal keeps its slots: cabslot/pedal in the user's state folder.
/// Empty if there is no state folder.
std::string builtInPedalFolder();

} // namespace cabslot
