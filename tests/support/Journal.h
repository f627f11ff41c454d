// Records a HID service's callbacks: "+" matched, "-" removed, a number: a report's length.
#pragma once

#include "device/HIDManager.h"

#include <string>
#include <vector>

namespace cabslot::testing {

struct Journal {
    HIDCallbacks callbacks() {
        return {.context = this,
                .matching = [](void* context, int, void*,
                               const HIDDeviceRef& device) { of(context).add("+", device); },
                .removal = [](void* context, int, void*,
                              const HIDDeviceRef& device) { of(context).add("-", device); },
                .report =
                    [](void* context, int, const HIDDeviceRef& device, HIDReportType, std::uint32_t,
                       const std::uint8_t* report, std::size_t length) {
                        of(context).lastReport.assign(report, report + length);
                        of(context).add(std::to_string(length), device);
                    }};
    }
    static Journal& of(void* context) { return *static_cast<Journal*>(context); }
    void add(const std::string& what, const HIDDeviceRef& from) {
        text += what + " ";
        lastDevice = from;
    }

    std::string text;
    HIDDeviceRef lastDevice;
    std::vector<std::uint8_t> lastReport;
};

} // namespace cabslot::testing
