// The HID service over USB: hidapi on hidraw nodes.
//
// hidapi does not report when devices come and go. New ones are found by polling, twice a second
// while none is announced and once a second afterwards. Failing reads reveal a loss; after failing
// writes a scan does.
#pragma once

#include "device/HIDManager.h"
#include "platform/NoDeviceReason.h"
#include "platform/UsbBus.h"

#include <memory>
#include <string>
#include <vector>

namespace cabslot {

class UsbDevice;

class UsbHIDManager final : public HIDManager {
public:
    explicit UsbHIDManager(WhileInUse whileInUse = {});

    /// Closes every device; the device thread must have ended. References to them may remain.
    ~UsbHIDManager() override;

    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override { return whyNoDevice_.text(); }

private:
    using Device = std::shared_ptr<UsbDevice>;

    void lookForDevices();
    bool isKnown(const std::string& path) const;
    void removeClosedBut(const std::vector<UsbFinding>& there);
    std::vector<UsbFinding> openNew();
    void explain(const UsbVerdict& verdict);
    void announce(const Device& device);
    void listen(TimePoint deadline);
    void readFrom(const Device& device, int milliseconds);
    void removeLost();
    void remove(const Device& device);

    HIDMatching matching_{};
    HIDCallbacks callbacks_;
    std::vector<Device> devices_; ///< announced; the link may have closed some
    TimePoint nextLook_{};        ///< when to scan again
    WhileInUse whileInUse_;       ///< until the first scan is over
    NoDeviceReason whyNoDevice_;
};

} // namespace cabslot
