#include "simulator/usb/UsbDescriptors.h"

#include "base/Pedal.h"

#include <algorithm>
#include <string_view>

namespace cabslot::simulator {

namespace {

// Two-byte fields are little-endian, as everywhere on USB.

constexpr std::uint8_t low(std::uint16_t value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

constexpr std::uint8_t high(std::uint16_t value) {
    return static_cast<std::uint8_t>(value >> 8);
}

constexpr std::array<std::uint8_t, 18> deviceDescriptor{
    18,
    0x01, // length, kind: device
    0x00,
    0x02, // USB 2.0
    0x00,
    0x00,
    0x00, // class, subclass, protocol: see the interface
    64,   // largest packet of the control endpoint
    low(pedalVendor),
    high(pedalVendor),
    low(pedalProduct),
    high(pedalProduct),
    low(pedalRelease),
    high(pedalRelease),
    1,
    2,
    0, // strings: maker, product, no serial number
    1, // configurations
};

constexpr std::array<std::uint8_t, 25> reportDescriptor{
    0x06, 0x00, 0xFF, // usage page: vendor-defined
    0x09, 0x01,       // usage 1
    0xA1, 0x01,       // collection: application
    0x15, 0x00,       //   from 0
    0x26, 0xFF, 0x00, //   to 255
    0x75, 0x08,       //   8 bits
    0x95, 0x40,       //   64 times
    0x09, 0x01,       //   usage 1
    0x81, 0x02,       //   input
    0x09, 0x01,       //   usage 1
    0x91, 0x02,       //   output
    0xC0,             // end
};

constexpr std::array<std::uint8_t, 41> configurationDescriptor{
    9,    0x02,          // length, kind: configuration
    41,   0,             // total length
    1,    1,    0,       // interfaces, this one's number, no name
    0x80, 50,            // powered by the bus, 50 times 2 mA
    9,    0x04,          // length, kind: interface
    0,    0,    2,       // number, alternative, endpoints
    0x03, 0,    0,    0, // HID, neither keyboard nor mouse, no name
    9,    0x21,          // length, kind: HID
    0x11, 0x01, 0,       // HID 1.11, no country
    1,    0x22,          // one descriptor, kind: report
    25,   0,             // its length
    7,    0x05, 0x81,    // length, kind: endpoint, 1 in
    0x03, 64,   0,    1, // interrupt, 64 bytes, every ms
    7,    0x05, 0x01,    // length, kind: endpoint, 1 out
    0x03, 64,   0,    1, // interrupt, 64 bytes, every ms
};
static_assert(configurationDescriptor[25] == reportDescriptor.size());

constexpr std::array<std::uint8_t, 4> languages{4, 0x03, 0x09, 0x04}; // US English only
constexpr std::array<std::string_view, 2> strings{"Cabslot", "Simulated pedal"};

constexpr std::size_t hidPart = 18; // offset of the HID descriptor in the configuration
constexpr std::size_t hidPartSize = 9;

// Identifies a request by its type and its number.
constexpr unsigned requestCode(unsigned type, unsigned number) {
    return type << 8U | number;
}
constexpr unsigned getStatus = requestCode(0x80, 0x00);
constexpr unsigned getDescriptor = requestCode(0x80, 0x06);
constexpr unsigned getInterfaceDescriptor = requestCode(0x81, 0x06);
constexpr unsigned clearEndpointHalt = requestCode(0x02, 0x01);
constexpr unsigned setConfiguration = requestCode(0x00, 0x09);
constexpr unsigned setInterface = requestCode(0x01, 0x0B);
constexpr unsigned setIdle = requestCode(0x21, 0x0A);

// Descriptor types, the high byte of the request's value.
constexpr unsigned deviceKind = 0x01;
constexpr unsigned configurationKind = 0x02;
constexpr unsigned stringKind = 0x03;
constexpr unsigned hidKind = 0x21;
constexpr unsigned reportKind = 0x22;

using Answer = std::optional<std::vector<std::uint8_t>>;

Answer copyOf(std::span<const std::uint8_t> bytes) {
    return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

Answer stringDescriptor(std::size_t index) {
    if (index == 0)
        return copyOf(languages);
    if (index > strings.size())
        return std::nullopt;
    const std::string_view text = strings[index - 1];
    std::vector<std::uint8_t> bytes{static_cast<std::uint8_t>(2 + 2 * text.size()), stringKind};
    for (const char c : text) {
        bytes.push_back(static_cast<std::uint8_t>(c));
        bytes.push_back(0);
    }
    return bytes;
}

Answer descriptor(unsigned kind, unsigned index) {
    switch (kind) {
    case deviceKind:
        return copyOf(deviceDescriptor);
    case configurationKind:
        return copyOf(configurationDescriptor);
    case stringKind:
        return stringDescriptor(index);
    case hidKind:
        return copyOf(std::span(configurationDescriptor).subspan(hidPart, hidPartSize));
    case reportKind:
        return copyOf(reportDescriptor);
    default:
        return std::nullopt;
    }
}

Answer wholeAnswer(const UsbSetup& setup) {
    switch (requestCode(setup[0], setup[1])) {
    case getDescriptor:
    case getInterfaceDescriptor:
        return descriptor(setup[3], setup[2]);
    case getStatus:
        return std::vector<std::uint8_t>{0, 0}; // powered by the bus, no remote wake-up
    case clearEndpointHalt:
    case setConfiguration:
    case setInterface:
    case setIdle:
        return std::vector<std::uint8_t>{};
    default:
        return std::nullopt;
    }
}

} // namespace

std::span<const std::uint8_t> usbDeviceDescriptor() {
    return deviceDescriptor;
}

std::span<const std::uint8_t> usbConfigurationDescriptor() {
    return configurationDescriptor;
}

std::span<const std::uint8_t> hidReportDescriptor() {
    return reportDescriptor;
}

std::optional<std::vector<std::uint8_t>> answerControl(const UsbSetup& setup) {
    Answer answer = wholeAnswer(setup);
    const std::size_t asked = setup[6] + (std::size_t{setup[7]} << 8U);
    if (answer && answer->size() > asked)
        answer->resize(asked);
    return answer;
}

} // namespace cabslot::simulator
