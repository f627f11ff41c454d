#include "device/HIDReports.h"

#include "device/DeviceObject.h"
#include "device/SharedState.h"

#include <algorithm>

namespace cabslot {

namespace {

void fill(HIDReport& report, const std::uint8_t* data, std::size_t size) {
    report[0] = static_cast<std::uint8_t>(size);
    std::copy_n(data, size, report.begin() + 1);
}

bool send(const HIDReport& report) {
    return HID_Device != nullptr && HID_Device->SetReport(report);
}

} // namespace

int WriteHid(const std::uint8_t* data, std::int32_t len) {
    // Kept between calls: after a partial report's data, the previous report's bytes are sent.
    static HIDReport WriteReportBuffer{};

    const std::size_t size = len > 0 ? static_cast<std::size_t>(len) : 0;
    const std::size_t full = size / reportDataSize;
    const std::size_t rest = size % reportDataSize;

    WriteReportBuffer[0] = 0;
    for (std::size_t i = 0; i < full; ++i, data += reportDataSize) {
        fill(WriteReportBuffer, data, reportDataSize);
        if (!send(WriteReportBuffer))
            return 0;
    }
    if (rest == 0)
        return 1;
    fill(WriteReportBuffer, data, rest);
    // Checked only here: the protocol requires a full report to fail silently without a device.
    if (isDeviceConnent != 1) {
        raiseDeviceEvent(deviceLost);
        return 0;
    }
    return send(WriteReportBuffer) ? 1 : 0;
}

} // namespace cabslot
