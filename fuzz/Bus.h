// Two devices on a bus, the link that knows them, and their reports.
#pragma once

#include "device/DeviceObject.h"
#include "device/HIDCallbacks.h"
#include "fuzz/ReceiverState.h"

#include <cstring>

namespace cabslot::fuzz {

// How an input starts.
enum Situation : std::uint8_t {
    handshakeOn = 1,
    deviceThere = 2,
    bothKnown = 4,
    ringNearlyFull = 8
};

/// What happens next. The higher bits describe a report; after them follow its length, if
/// `oddLength` is set, a count byte and that many bytes.
enum Choice : std::uint8_t {
    what = 0x03, ///< 0, 1: report; 2: ticks, then a count; 3: a device comes or goes
    fromTheOther = 0x04,
    goes = 0x08, ///< for 3: it goes
    fromNobody = 0x08,
    oddLength = 0x10,
    withIdentity = 0x20,
    withVersion = 0x40,
    withModelA = 0x80,
};

constexpr std::uint32_t nearlyFull = rxBufferSize - 100;

struct Device final : HIDDevice {
    bool SetReport(const HIDReport& /*report*/) override { return true; }
    void close() override { closed = true; }
    bool closed = false;
};

struct Bus {
    class Link final : public DeviceObject {};
    std::shared_ptr<Device> pedal = std::make_shared<Device>();
    std::shared_ptr<Device> other = std::make_shared<Device>();
    Link link;
    int losses = 0;

    explicit Bus(std::uint8_t situation) {
        resetSharedState();
        HIDDeviceID_int = (situation & handshakeOn) != 0 ? 0x5703 : 0;
        if ((situation & deviceThere) != 0)
            Handle_DeviceMatchingCallback(nullptr, 0, nullptr, pedal);
        if ((situation & ringNearlyFull) != 0)
            rx_buffer_count = rx_buffer_writep = nearlyFull;
        object = &link;
        if ((situation & bothKnown) != 0)
            link.setDeviceRefs({other, pedal});
        link.addObserver([this] { losses += link.KVOValue() == deviceLost ? 1 : 0; });
    }
    ~Bus() { resetSharedState(); }
};

inline Bytes reportFrom(std::uint8_t choice, Input& input) {
    Bytes report((choice & oddLength) != 0 ? input.byte() : hidReportSize);
    const View start = input.counted();
    std::copy_n(start.begin(), std::min(start.size(), report.size()), report.begin());
    if (report.size() < hidReportSize)
        return report;
    if ((choice & withIdentity) != 0)
        std::memcpy(&report[6], "VEX_Tombra", 10);
    if ((choice & withVersion) != 0)
        std::memcpy(&report[45], "V1.0.0", 6);
    if ((choice & withModelA) != 0)
        report[59] = 'A';
    return report;
}

/// `report` has just completed the handshake.
inline void checkHandshake(const Bus& bus, const Bytes& report) {
    const bool versionRight = report[59] != 'A' || std::memcmp(&report[45], "V1.0.0", 6) == 0;
    check(deviceModel == static_cast<char>(report[59]) && isVersionTrue == (versionRight ? 1 : 0),
          "the version is compared for model A only");
    const bool known = !bus.link.deviceRefs().empty();
    check(deveiceIndex == (!known || !HID_Device     ? -1
                           : HID_Device == bus.pedal ? 1
                                                     : 0),
          "the current device has the index");
    check(bus.other->closed == (known && HID_Device != bus.other) &&
              bus.pedal->closed == (known && HID_Device != bus.pedal),
          "known others are closed");
}

} // namespace cabslot::fuzz
