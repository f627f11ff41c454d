#include "simulator/pedal/PedalFrames.h"

#include <algorithm>
#include <utility>

namespace cabslot::simulator {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t syncBytes[] = {0xAA, 0x55};
constexpr std::size_t bodyOffset = 4; // after the sync bytes and the length
constexpr std::size_t crcSize = 2;
constexpr std::size_t shortestFrame = bodyOffset + crcSize;

std::uint8_t lowByte(std::size_t value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}
std::uint8_t highByte(std::size_t value) {
    return static_cast<std::uint8_t>(value >> 8);
}

/// The size of the frame at the start of `bytes`, or its minimum while the length has not arrived.
/// No value if no frame starts there.
std::optional<std::size_t> frameSize(Bytes bytes) {
    if (bytes[0] != syncBytes[0])
        return std::nullopt;
    if (bytes.size() > 1 && bytes[1] != syncBytes[1])
        return std::nullopt;
    if (bytes.size() < bodyOffset)
        return shortestFrame;
    const std::size_t length = bytes[2] + (std::size_t{bytes[3]} << 8);
    if (length > maxLength)
        return std::nullopt;
    return shortestFrame + length;
}

bool crcMatches(Bytes frame) {
    const Bytes crc = frame.last(crcSize);
    const Bytes covered = frame.subspan(2, frame.size() - 2 - crcSize);
    return crcOf(covered) == ((crc[0] << 8) | crc[1]);
}

Frame decode(Bytes frame) {
    const Bytes body = frame.subspan(bodyOffset, frame.size() - shortestFrame);
    if (body.empty())
        return {};
    return {body[0], {body.begin() + 1, body.end()}};
}

} // namespace

std::uint16_t crcOf(Bytes bytes) {
    constexpr unsigned polynomial = 0x1021;
    unsigned crc = 0;
    for (const std::uint8_t byte : bytes) {
        crc ^= static_cast<unsigned>(byte) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            const bool carry = (crc & 0x8000) != 0;
            crc = ((crc << 1) ^ (carry ? polynomial : 0)) & 0xFFFF;
        }
    }
    return static_cast<std::uint16_t>(crc ^ 0xFFFF);
}

std::vector<std::uint8_t> encodeFrame(std::uint8_t command, Bytes payload) {
    payload = payload.first(std::min(payload.size(), maxLength - 1));
    const std::size_t length = 1 + payload.size();
    std::vector<std::uint8_t> frame(shortestFrame + length);
    frame[0] = syncBytes[0];
    frame[1] = syncBytes[1];
    frame[2] = lowByte(length);
    frame[3] = highByte(length);
    frame[bodyOffset] = command;
    std::copy(payload.begin(), payload.end(), frame.begin() + bodyOffset + 1);
    const std::uint16_t crc = crcOf(Bytes(frame).subspan(2, 2 + length));
    frame[bodyOffset + length] = highByte(crc);
    frame[bodyOffset + length + 1] = lowByte(crc);
    return frame;
}

std::vector<Frame> FrameParser::feed(Bytes bytes) {
    held_.insert(held_.end(), bytes.begin(), bytes.end());
    std::vector<Frame> frames;
    Bytes rest = held_;
    while (!rest.empty()) {
        const std::optional<std::size_t> size = frameSize(rest);
        if (size && *size > rest.size())
            break; // this frame is not complete yet
        if (size && crcMatches(rest.first(*size))) {
            frames.push_back(decode(rest.first(*size)));
            rest = rest.subspan(*size);
        } else {
            rest = rest.subspan(1);
            ++skipped_;
        }
    }
    held_ = std::vector<std::uint8_t>(rest.begin(), rest.end());
    return frames;
}

std::size_t FrameParser::takeSkipped() {
    return std::exchange(skipped_, 0);
}

} // namespace cabslot::simulator
