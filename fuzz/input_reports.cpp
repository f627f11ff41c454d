// Input reports as devices may send them: of any length, from any device, before and after the
// identity handshake, while devices come and go.
//
// Input: the situation (bits), then a row of choices (bits), each with what it needs.
#include "device/DeviceObject.h"
#include "device/HIDCallbacks.h"
#include "fuzz/ReceiverState.h"

#include <cstring>

namespace cabslot::fuzz {
namespace {

enum Situation : std::uint8_t { handshakeOn = 1, deviceThere = 2, bothKnown = 4 };
enum Choice : std::uint8_t {
    what = 0x03, ///< 0, 1: report; 2: ticks, then a count; 3: a device comes or goes
    fromTheOther = 0x04,
    goes = 0x08, ///< for 3: it goes
    fromNobody = 0x08,
    oddLength = 0x10, ///< then a length
    withIdentity = 0x20,
    withVersion = 0x40,
    withModelA = 0x80,
};

constexpr std::int32_t productWithHandshake = 0x5703;
constexpr std::int32_t timerAfterDrop = 40;
constexpr std::int32_t timerBefore = 7;

class Device final : public HIDDevice {
public:
    bool SetReport(const HIDReport& /*report*/) override { return true; }
    void close() override { closed = true; }
    bool closed = false;
};

class Link final : public DeviceObject {};

struct Bus {
    std::shared_ptr<Device> pedal = std::make_shared<Device>();
    std::shared_ptr<Device> other = std::make_shared<Device>();
    Link link;
    int losses = 0;

    explicit Bus(std::uint8_t situation) {
        resetSharedState();
        HIDDeviceID_int = (situation & handshakeOn) != 0 ? productWithHandshake : 0;
        if ((situation & deviceThere) != 0)
            Handle_DeviceMatchingCallback(nullptr, 0, nullptr, pedal);
        object = &link;
        if ((situation & bothKnown) != 0)
            link.setDeviceRefs({other, pedal});
        link.addObserver([this] { losses += link.KVOValue() == deviceLost ? 1 : 0; });
    }
    ~Bus() { resetSharedState(); }
};

Bytes makeReport(std::uint8_t choice, Input& input) {
    Bytes report(255); // so that what is stamped into it always fits
    const std::size_t length = (choice & oddLength) != 0 ? input.byte() : hidReportSize;
    const Bytes start = input.bytes(input.byte());
    std::copy(start.begin(), start.end(), report.begin());
    if ((choice & withIdentity) != 0)
        std::memcpy(&report[6], "VEX_Tombra", 10);
    if ((choice & withVersion) != 0)
        std::memcpy(&report[45], "V1.0.0", 6);
    if ((choice & withModelA) != 0)
        report[59] = 'A';
    return {report.begin(), report.begin() + static_cast<std::ptrdiff_t>(length)};
}

void demandHandshake(const Bus& bus, const Bytes& report) {
    const bool versionRight = std::memcmp(&report[45], "V1.0.0", 6) == 0;
    demand(deviceModel == static_cast<char>(report[59]), "the model is the report's");
    demand(isVersionTrue == (report[59] != 'A' || versionRight ? 1 : 0),
           "model A's version is compared, no other's");
    const auto& known = bus.link.deviceRefs();
    const auto found = std::find(known.begin(), known.end(), HID_Device) - known.begin();
    demand(deveiceIndex == (found < std::ssize(known) ? found : -1), "so is the index");
    for (const auto& device : {bus.pedal, bus.other}) {
        const bool isKnown = std::find(known.begin(), known.end(), device) != known.end();
        demand(device->closed == (isKnown && device != HID_Device), "known others are closed");
    }
}

void report(Bus& bus, std::uint8_t choice, Input& input) {
    const Bytes bytes = makeReport(choice, input);
    HIDDeviceRef sender = (choice & fromTheOther) != 0 ? bus.other : bus.pedal;
    if ((choice & fromNobody) != 0)
        sender = nullptr;
    const bool dropped = bytes.size() != hidReportSize || sender != HID_Device;
    const bool asks = !dropped && HIDDeviceID_int != 0 && deviceDidTrue == 0;
    const bool taken = !dropped && (!asks || std::memcmp(&bytes[6], "VEX_Tombra", 10) == 0);
    const std::uint32_t free = rxBufferSize - rx_buffer_count;
    const std::uint32_t n = taken ? std::min<std::uint32_t>(bytes[0], 63) : 0;

    timer = timerBefore;
    deviceReportCallback(nullptr, 0, sender, HIDReportType::input, 0, bytes.data(), bytes.size());
    demand(timer == (dropped ? timerAfterDrop : timerBefore), "a dropped report shows in `timer`");
    demand(rxBufferSize - rx_buffer_count == (n <= free ? free - n : free),
           "its valid bytes are stored, whole or not at all");
    if (asks)
        demand(deviceDidTrue == (taken ? 1 : 0) && deviceTrue == (taken ? 1 : 0),
               "the identity decides the handshake");
    if (asks && taken)
        demandHandshake(bus, bytes);
}

void comeOrGo(Bus& bus, std::uint8_t choice) {
    const HIDDeviceRef device = (choice & fromTheOther) != 0 ? bus.other : bus.pedal;
    const HIDDeviceRef current = HID_Device;
    const int losses = bus.losses;
    if ((choice & goes) == 0) {
        Handle_DeviceMatchingCallback(nullptr, 0, nullptr, device);
        demand(HID_Device == (current ? current : device), "the first that comes stays");
        return;
    }
    Handle_DeviceRemovalCallback(nullptr, 0, nullptr, device);
    const bool lost = device == current;
    demand(HID_Device == (lost ? nullptr : current), "only the current device can be lost");
    demand(bus.losses == losses + (lost ? 1 : 0), "a loss is told once");
}

} // namespace
} // namespace cabslot::fuzz

// The handshake prints what it compares: not onto the fuzzer's screen.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    cabslot::fuzz::demand(std::freopen("/dev/null", "w", stdout) != nullptr, "/dev/null is there");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    Input input(data, size);
    Bus bus(input.byte());
    while (!input.empty()) {
        const std::uint8_t choice = input.byte();
        switch (choice & what) {
        case 2:
            for (std::uint8_t i = input.byte(); i > 0; --i)
                tick();
            break;
        case 3:
            comeOrGo(bus, choice);
            break;
        default:
            report(bus, choice, input);
        }
        demandReceiverInOrder();
        demand((cabslot::isDeviceConnent == 1) == (cabslot::HID_Device != nullptr),
               "a device is current or not");
    }
    return 0;
}
