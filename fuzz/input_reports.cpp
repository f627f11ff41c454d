// Input reports as devices may send them: of any length, from any device, before and after the
// identity handshake, while devices come and go.
//
// Input: the situation (bits), then choices (bits), each followed by its data.
#include "fuzz/Bus.h"

namespace cabslot::fuzz {
namespace {

constexpr int mostChoices = 24;
constexpr std::int32_t timerBefore = 7;

void report(Bus& bus, std::uint8_t choice, Input& input) {
    const Bytes bytes = reportFrom(choice, input);
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
    check(timer == (dropped ? 40 : timerBefore), "a dropped report resets `timer`");
    check(rxBufferSize - rx_buffer_count == (n <= free ? free - n : free),
          "its valid bytes are stored, whole or not at all");
    if (!asks)
        return;
    check(deviceDidTrue == (taken ? 1 : 0) && deviceTrue == (taken ? 1 : 0),
          "the identity decides the handshake");
    if (taken)
        checkHandshake(bus, bytes);
}

void comeOrGo(Bus& bus, std::uint8_t choice) {
    const HIDDeviceRef device = (choice & fromTheOther) != 0 ? bus.other : bus.pedal;
    const HIDDeviceRef current = HID_Device;
    const int losses = bus.losses;
    const bool leaves = (choice & goes) != 0;
    const bool lost = leaves && device == current;
    (leaves ? Handle_DeviceRemovalCallback : Handle_DeviceMatchingCallback)(nullptr, 0, nullptr,
                                                                            device);
    const HIDDeviceRef next = lost ? nullptr : leaves || current ? current : device;
    check(HID_Device == next, "the first device stays current until it is removed");
    check(bus.losses == losses + (lost ? 1 : 0), "a loss is reported once");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    Input input(data, size);
    Bus bus(input.byte());
    for (int i = 0; i < mostChoices && !input.empty(); ++i) {
        const std::uint8_t choice = input.byte();
        if ((choice & what) < 2)
            report(bus, choice, input);
        else if ((choice & what) == 3)
            comeOrGo(bus, choice);
        else
            for (int ticks = input.byte() & 31; ticks > 0; --ticks)
                tick();
        checkReceiverInOrder();
        check((cabslot::isDeviceConnent == 1) == (cabslot::HID_Device != nullptr),
              "isDeviceConnent says whether a device is current");
    }
    return 0;
}
