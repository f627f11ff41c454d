// A HID service that logs every report that passes through it, for a bug report.
#pragma once

#include "device/HIDManager.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

class TracedDevice;

class TracingHIDManager final : public HIDManager {
public:
    /// Forwards everything to `inner`. Each report becomes one line in `out`, written on the device
    /// thread and flushed at once: seconds since open(), direction, bytes in hex. Lines without a
    /// direction say what happened to the device, or why there is none. `out` must
    /// outlive this object; check its state afterwards to learn whether everything was written.
    TracingHIDManager(std::unique_ptr<HIDManager> inner, std::ostream& out);
    ~TracingHIDManager() override;

    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override;

    /// Writes one line: the time, then `what`. Device thread.
    void note(std::string_view what);
    void note(std::string_view direction, const std::uint8_t* bytes, std::size_t size);

private:
    static TracingHIDManager& self(void* context);
    static void matched(void* context, int result, void* sender, const HIDDeviceRef& device);
    static void removed(void* context, int result, void* sender, const HIDDeviceRef& device);
    static void reported(void* context, int result, const HIDDeviceRef& sender, HIDReportType type,
                         std::uint32_t reportID, const std::uint8_t* report,
                         std::size_t reportLength);
    std::shared_ptr<TracedDevice> traced(const HIDDeviceRef& device) const;

    std::unique_ptr<HIDManager> inner_;
    std::ostream& out_;
    TimePoint start_{};
    HIDCallbacks callbacks_;
    std::vector<std::shared_ptr<TracedDevice>> devices_;
    std::string notedWhy_; ///< why there is no device, as it was last written
};

} // namespace cabslot
