// The USB/IP messages between Linux's virtual USB port (vhci-hcd) and a device, as far as a HID
// device needs them. Each is a header of 48 bytes, all big-endian, some with data after it.
//
//   offset  size  field
//   0       4     command: 1 submit, 2 unlink; answered by 3 and 4
//   4       4     sequence number; an answer repeats its request's
//   8       4     device; 0 in answers
//   12      4     direction: 0 out, 1 in; 0 in answers
//   16      4     endpoint number; 0 in answers
//   20      4     submit: flags; unlink: sequence number to cancel; answers: status
//   24      4     submit: data bytes; its answer: data bytes transferred
//   28      12    submit: not used here
//   40      8     submit to endpoint 0: the setup bytes
//
// Data follow an outgoing submit, and the answer to an incoming one.
#pragma once

#include "simulator/usb/UsbDescriptors.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace cabslot::simulator {

inline constexpr std::size_t usbIpHeaderSize = 48;
using UsbIpHeader = std::array<std::uint8_t, usbIpHeaderSize>;

enum class UsbIpCommand : std::uint32_t { submit = 1, unlink = 2 };

struct UsbIpRequest {
    UsbIpCommand command{}; ///< may be a value without a name
    std::uint32_t sequence = 0;
    bool in = false; ///< from the device to the host
    std::uint32_t endpoint = 0;
    std::uint32_t unlinked = 0; ///< unlink: the sequence number of the cancelled request
    std::uint32_t length = 0;   ///< submit: data bytes
    UsbSetup setup{};           ///< submit to endpoint 0
};

UsbIpRequest decodeRequest(const UsbIpHeader& header);

/// A status is 0 or one of these negative Linux error numbers.
inline constexpr std::int32_t statusStalled = -32;
inline constexpr std::int32_t statusUnlinked = -104;

/// The answer to a submit. `moved` is the number of data bytes transferred either way; `data` are
/// those for the host.
std::vector<std::uint8_t> encodeSubmitAnswer(std::uint32_t sequence, std::int32_t status,
                                             std::size_t moved, std::span<const std::uint8_t> data);

/// The answer to an unlink: statusUnlinked, or 0 if the request had already completed.
std::vector<std::uint8_t> encodeUnlinkAnswer(std::uint32_t sequence, std::int32_t status);

} // namespace cabslot::simulator
