// Reads and writes frames on the pedal's side.
//
//   offset  size  field
//   0       2     AA 55
//   2       2     L, little-endian: bytes of the command and its payload, 0 to 1018
//   4       1     command, unless L is 0
//   5       L-1   payload
//   L+4     2     CRC-16 of the length, the command and the payload, big-endian
//
// It shares no code with the host's side, so that a bug in either side shows up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace cabslot::simulator {

/// The largest L that a pedal accepts or sends.
inline constexpr std::size_t maxLength = 1018;

/// CRC-16 with polynomial 0x1021, highest bit first, initial value 0, all bits inverted at the end.
std::uint16_t crcOf(std::span<const std::uint8_t> bytes);

/// The whole frame, from AA to the CRC. A payload of more than 1017 bytes is truncated.
std::vector<std::uint8_t> encodeFrame(std::uint8_t command, std::span<const std::uint8_t> payload);

struct Frame {
    std::optional<std::uint8_t> command; ///< no value in a frame of length 0
    std::vector<std::uint8_t> payload;
};

/// Finds the valid frames in a byte stream that arrives in arbitrary pieces.
class FrameParser {
public:
    /// Takes the next bytes and returns the frames that they complete, in order. Bytes that cannot
    /// belong to a valid frame are skipped one by one, so that a valid frame among them is found.
    /// Between calls, keeps at most 1023 bytes of an incomplete frame.
    std::vector<Frame> feed(std::span<const std::uint8_t> bytes);

    /// The number of bytes skipped since the last call.
    std::size_t takeSkipped();

private:
    std::vector<std::uint8_t> held_;
    std::size_t skipped_ = 0;
};

} // namespace cabslot::simulator
