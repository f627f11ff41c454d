// The messages between Linux's virtual USB port (vhci-hcd) and a device behind it, as far as a HID
// device needs them. Each is a header of 48 bytes, all numbers big-endian, with data behind some.
//
//   offset  size  field
//   0       4     command: 1 submit, 2 unlink; answered by 3 and 4
//   4       4     sequence number; an answer has its request's
//   8       4     device; 0 in answers
//   12      4     direction: 0 out, 1 in; 0 in answers
//   16      4     endpoint number; 0 in answers
//   20      4     submit: flags; unlink: the sequence number it is about; answers: status
//   24      4     submit and its answer: data bytes asked for or given, actually moved
//   28      12    submit: not used here
//   40      8     submit to endpoint 0: the setup bytes
//
// Data follow a submit that goes out, and the answer to one that comes in.
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
    UsbIpCommand command{}; ///< may be a value that has no name
    std::uint32_t sequence = 0;
    bool in = false; ///< from the device to the host
    std::uint32_t endpoint = 0;
    std::uint32_t unlinked = 0; ///< unlink: the sequence number of what is taken back
    std::uint32_t length = 0;   ///< submit: data bytes
    UsbSetup setup{};           ///< submit to endpoint 0
};

UsbIpRequest decodeRequest(const UsbIpHeader& header);

/// A status is 0 or one of these, negative error numbers of Linux.
inline constexpr std::int32_t statusStalled = -32;
inline constexpr std::int32_t statusUnlinked = -104;

/// The answer to a submit. `moved` is how many data bytes went either way; `data` are those that
/// go to the host.
std::vector<std::uint8_t> encodeSubmitAnswer(std::uint32_t sequence, std::int32_t status,
                                             std::size_t moved, std::span<const std::uint8_t> data);

/// The answer to an unlink: statusUnlinked, or 0 when there was nothing left to take back.
std::vector<std::uint8_t> encodeUnlinkAnswer(std::uint32_t sequence, std::int32_t status);

} // namespace cabslot::simulator
