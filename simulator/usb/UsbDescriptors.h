// The simulated pedal's USB descriptors and its answers to a host's control requests.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace cabslot::simulator {

/// The endpoint number of both the input and the output endpoint for reports.
inline constexpr std::uint32_t reportEndpoint = 1;

std::span<const std::uint8_t> usbDeviceDescriptor();

/// The configuration descriptor, followed by the interface, HID and both endpoint descriptors.
std::span<const std::uint8_t> usbConfigurationDescriptor();

/// The report format: 64 bytes either way, of no declared meaning, without a report ID.
std::span<const std::uint8_t> hidReportDescriptor();

/// The eight setup bytes of a control transfer.
using UsbSetup = std::array<std::uint8_t, 8>;

/// The pedal's answer, truncated to the requested length; empty for a request that only sets
/// something. No value: the pedal does not know the request and stalls the endpoint.
std::optional<std::vector<std::uint8_t>> answerControl(const UsbSetup& setup);

} // namespace cabslot::simulator
