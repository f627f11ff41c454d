// The pedal's own reading and writing of frames.
//
//   offset  size  field
//   0       2     AA 55
//   2       2     L, little-endian: how many bytes the command and its payload take, 0 to 1018
//   4       1     command, unless L is 0
//   5       L-1   payload
//   L+4     2     CRC-16 of the length, the command and the payload, big-endian
//
// It shares no code with the host's side, so that a fault in one side shows against the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace cabslot::simulator {

/// The largest L that a pedal takes or sends.
inline constexpr std::size_t maxLength = 1018;

/// CRC-16 of polynomial 0x1021, highest bit first, starting from 0, all bits inverted at the end.
std::uint16_t crcOf(std::span<const std::uint8_t> bytes);

/// The whole frame, from the AA to the CRC. A payload of more than 1017 bytes is cut there.
std::vector<std::uint8_t> encodeFrame(std::uint8_t command, std::span<const std::uint8_t> payload);

struct Frame {
    std::optional<std::uint8_t> command; ///< none in a frame of length 0
    std::vector<std::uint8_t> payload;
};

/// Finds the good frames in a stream of bytes that comes in pieces cut anywhere.
class FrameParser {
public:
    /// Takes the next bytes and returns the frames that end in them, in order. Bytes that cannot
    /// belong to a good frame are skipped, one at a time, so that a good frame among them is found.
    /// Between calls at most 1023 bytes are kept: the start of a frame that is not complete yet.
    std::vector<Frame> feed(std::span<const std::uint8_t> bytes);

    /// How many bytes were skipped since the last call.
    std::size_t takeSkipped();

private:
    std::vector<std::uint8_t> held_;
    std::size_t skipped_ = 0;
};

} // namespace cabslot::simulator
