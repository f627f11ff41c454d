// The simulated pedal's USB descriptors, and its answers to a host's requests on the control
// endpoint.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace cabslot::simulator {

/// The endpoint number of both report pipes, the input and the output one.
inline constexpr std::uint32_t reportEndpoint = 1;

std::span<const std::uint8_t> usbDeviceDescriptor();

/// The configuration with all that belongs to it: interface, HID and both endpoint descriptors.
std::span<const std::uint8_t> usbConfigurationDescriptor();

/// What a report looks like: 64 bytes either way, of no declared meaning, without a report ID.
std::span<const std::uint8_t> hidReportDescriptor();

/// The eight bytes that open a control transfer.
using UsbSetup = std::array<std::uint8_t, 8>;

/// The pedal's answer, cut to the length that the host asked for; empty for a request that only
/// sets something. Nothing: the pedal does not know the request and stalls the endpoint.
std::optional<std::vector<std::uint8_t>> answerControl(const UsbSetup& setup);

} // namespace cabslot::simulator
