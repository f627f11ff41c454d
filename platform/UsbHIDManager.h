// The HID service over USB: hidapi on hidraw nodes.
//
// hidapi tells of nothing by itself. Devices are found by looking, twice a second while none is
// announced; a loss shows in a failing read or write. While a device is announced the bus is left
// alone: a second one that is plugged in later is not seen before the first has gone.
#pragma once

#include "device/HIDManager.h"
#include "platform/UsbBus.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace cabslot {

class UsbDevice;

class UsbHIDManager final : public HIDManager {
public:
    UsbHIDManager();

    /// Closes every device; the device thread must have ended. References to devices may remain.
    ~UsbHIDManager() override;

    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override;

private:
    using Device = std::shared_ptr<UsbDevice>;

    bool mayLook() const;
    void lookForDevices();
    void announce(const Device& device);
    void listen(TimePoint deadline);
    void readFrom(const Device& device, int milliseconds);
    void considerLoss(const Device& device, int milliseconds);
    bool isKnownToBeGone(const Device& device);
    void dropClosedAndLost();
    void remove(const Device& device);
    void setWhyNoDevice(std::string why);

    HIDMatching matching_{};
    HIDCallbacks callbacks_;
    std::vector<Device> devices_; ///< announced and open
    TimePoint nextLook_{};        ///< not before then
    bool hadDevice_ = false;

    mutable std::mutex whyMutex_;
    std::string whyNoDevice_;
};

} // namespace cabslot
