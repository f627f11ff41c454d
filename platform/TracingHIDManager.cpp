#include "platform/TracingHIDManager.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <utility>

namespace cabslot {

/// Wraps one device of the inner service and logs what is sent to it.
class TracedDevice final : public HIDDevice {
public:
    TracedDevice(HIDDeviceRef inner, TracingHIDManager& trace)
        : inner_(std::move(inner)), trace_(&trace) {}

    bool SetReport(const HIDReport& report) override {
        if (trace_ == nullptr)
            return false;
        const bool accepted = inner_->SetReport(report);
        trace_->note(accepted ? ">" : "> not accepted:", report.data(), report.size());
        return accepted;
    }

    void close() override { inner_->close(); }

    const HIDDeviceRef& inner() const { return inner_; }

    /// References to this object may outlive the trace.
    void end() { trace_ = nullptr; }

private:
    HIDDeviceRef inner_;
    TracingHIDManager* trace_; ///< null: the device is gone
};

TracingHIDManager::TracingHIDManager(std::unique_ptr<HIDManager> inner, std::ostream& out)
    : inner_(std::move(inner)), out_(out) {}

TracingHIDManager::~TracingHIDManager() {
    for (const auto& device : devices_)
        device->end();
}

bool TracingHIDManager::open(const HIDMatching& matching, const HIDCallbacks& callbacks) {
    start_ = std::chrono::steady_clock::now();
    callbacks_ = callbacks;
    out_ << "# seconds, > to the pedal or < from it, the report's bytes\n";
    return inner_->open(matching, {.context = this,
                                   .matching = &TracingHIDManager::matched,
                                   .removal = &TracingHIDManager::removed,
                                   .report = &TracingHIDManager::reported});
}

void TracingHIDManager::waitForEvents(TimePoint deadline) {
    inner_->waitForEvents(deadline);
    if (!devices_.empty())
        return;
    std::string why = inner_->whyNoDevice();
    if (why != notedWhy_ && !why.empty())
        note(why);
    notedWhy_ = std::move(why);
}

std::vector<HIDDeviceRef> TracingHIDManager::copyDevices() const {
    return {devices_.begin(), devices_.end()};
}

std::string TracingHIDManager::whyNoDevice() const {
    return inner_->whyNoDevice();
}

void TracingHIDManager::note(std::string_view what) {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%11.6f ", passed.count());
    out_ << time.data() << what << std::endl;
}

void TracingHIDManager::note(std::string_view direction, const std::uint8_t* bytes,
                             std::size_t size) {
    std::string line(direction);
    for (std::size_t i = 0; i < size; ++i) {
        std::array<char, 4> byte{};
        std::snprintf(byte.data(), byte.size(), " %02x", bytes[i]);
        line += byte.data();
    }
    note(line);
}

TracingHIDManager& TracingHIDManager::self(void* context) {
    return *static_cast<TracingHIDManager*>(context);
}

std::shared_ptr<TracedDevice> TracingHIDManager::traced(const HIDDeviceRef& device) const {
    const auto found = std::find_if(devices_.begin(), devices_.end(), [&](const auto& candidate) {
        return candidate->inner() == device;
    });
    return found == devices_.end() ? nullptr : *found;
}

void TracingHIDManager::matched(void* context, int result, void* /*sender*/,
                                const HIDDeviceRef& device) {
    TracingHIDManager& trace = self(context);
    trace.note("a device matched");
    const auto known = std::make_shared<TracedDevice>(device, trace);
    trace.devices_.push_back(known);
    trace.callbacks_.matching(trace.callbacks_.context, result, &trace, known);
}

void TracingHIDManager::removed(void* context, int result, void* /*sender*/,
                                const HIDDeviceRef& device) {
    TracingHIDManager& trace = self(context);
    trace.note("a device was removed");
    const auto known = trace.traced(device);
    std::erase(trace.devices_, known);
    trace.callbacks_.removal(trace.callbacks_.context, result, &trace, known);
    known->end();
}

void TracingHIDManager::reported(void* context, int result, const HIDDeviceRef& sender,
                                 HIDReportType type, std::uint32_t reportID,
                                 const std::uint8_t* report, std::size_t reportLength) {
    TracingHIDManager& trace = self(context);
    trace.note("<", report, reportLength);
    trace.callbacks_.report(trace.callbacks_.context, result, trace.traced(sender), type, reportID,
                            report, reportLength);
}

} // namespace cabslot
