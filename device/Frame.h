// The layout of a frame, the unit of the protocol in both directions.
//
//   offset  size  field
//   0       2     sync: AA 55
//   2       2     L, little-endian: 1 (command) + payload bytes
//   4       1     command
//   5       L-1   payload
//   L+4     2     CRC-16 of offsets 2 to L+3, big-endian
#pragma once

#include <cstddef>
#include <cstdint>

namespace cabslot {

inline constexpr std::uint8_t frameSync1 = 0xAA;
inline constexpr std::uint8_t frameSync2 = 0x55;

inline constexpr std::size_t frameLengthOffset = 2;
inline constexpr std::size_t frameCommandOffset = 4;
inline constexpr std::size_t framePayloadOffset = 5;

inline constexpr std::size_t frameOverhead = 6; ///< sync, length and CRC: a frame is L + 6 bytes
inline constexpr std::size_t maxFrameSize = 1024;
inline constexpr std::size_t maxFrameLength =
    maxFrameSize - frameOverhead; ///< the largest L received

/// Reads the length field of a frame that starts at `bytes`.
class FrameView {
public:
    explicit constexpr FrameView(const std::uint8_t* bytes) : bytes_(bytes) {}

    constexpr std::uint16_t length() const {
        return static_cast<std::uint16_t>(bytes_[frameLengthOffset] |
                                          (bytes_[frameLengthOffset + 1] << 8));
    }

private:
    const std::uint8_t* bytes_;
};

} // namespace cabslot
