#include "device/HIDReports.h"

#include "device/DeviceObject.h"
#include "device/SharedState.h"

#include <algorithm>

namespace cabslot {

namespace {

bool sendReport(HIDReport& report, const std::uint8_t* data, std::size_t size) {
    report[0] = static_cast<std::uint8_t>(size);
    std::copy_n(data, size, report.begin() + 1);
    return HID_Device != nullptr && HID_Device->SetReport(report);
}

} // namespace

int WriteHid(const std::uint8_t* data, std::int32_t len) {
    // Kept between calls: the bytes behind a partial report's data are the previous report's.
    static HIDReport WriteReportBuffer{};

    const std::size_t size = len > 0 ? static_cast<std::size_t>(len) : 0;
    const std::size_t full = size / reportDataSize;
    const std::size_t rest = size % reportDataSize;

    WriteReportBuffer[0] = 0;
    for (std::size_t i = 0; i < full; ++i, data += reportDataSize) {
        if (!sendReport(WriteReportBuffer, data, reportDataSize))
            return 0;
    }
    if (rest == 0)
        return 1;
    // The connection is looked at before the partial report only, on purpose: a full report that
    // finds no device fails without an event.
    if (isDeviceConnent != 1) {
        raiseDeviceEvent(deviceLost);
        return 0;
    }
    return sendReport(WriteReportBuffer, data, rest) ? 1 : 0;
}

} // namespace cabslot
