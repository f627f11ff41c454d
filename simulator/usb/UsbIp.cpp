#include "simulator/usb/UsbIp.h"

#include <algorithm>

namespace cabslot::simulator {

namespace {

constexpr std::size_t commandAt = 0;
constexpr std::size_t sequenceAt = 4;
constexpr std::size_t directionAt = 12;
constexpr std::size_t endpointAt = 16;
constexpr std::size_t unlinkedAt = 20; // in requests,
constexpr std::size_t statusAt = 20;   // in answers
constexpr std::size_t lengthAt = 24;
constexpr std::size_t setupAt = 40;

constexpr std::uint32_t directionIn = 1;
constexpr std::uint32_t submitAnswer = 3;
constexpr std::uint32_t unlinkAnswer = 4;

std::uint32_t numberAt(const UsbIpHeader& header, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8U | header[offset + i];
    return value;
}

void putNumber(std::vector<std::uint8_t>& message, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        message[offset + i] = static_cast<std::uint8_t>(value >> (24U - 8U * i));
}

std::vector<std::uint8_t> answer(std::uint32_t command, std::uint32_t sequence,
                                 std::int32_t status) {
    std::vector<std::uint8_t> message(usbIpHeaderSize);
    putNumber(message, commandAt, command);
    putNumber(message, sequenceAt, sequence);
    putNumber(message, statusAt, static_cast<std::uint32_t>(status));
    return message;
}

} // namespace

UsbIpRequest decodeRequest(const UsbIpHeader& header) {
    UsbIpRequest request;
    request.command = static_cast<UsbIpCommand>(numberAt(header, commandAt));
    request.sequence = numberAt(header, sequenceAt);
    request.in = numberAt(header, directionAt) == directionIn;
    request.endpoint = numberAt(header, endpointAt);
    request.unlinked = numberAt(header, unlinkedAt);
    request.length = numberAt(header, lengthAt);
    std::copy_n(header.begin() + setupAt, request.setup.size(), request.setup.begin());
    return request;
}

std::vector<std::uint8_t> encodeSubmitAnswer(std::uint32_t sequence, std::int32_t status,
                                             std::size_t moved,
                                             std::span<const std::uint8_t> data) {
    std::vector<std::uint8_t> message = answer(submitAnswer, sequence, status);
    putNumber(message, lengthAt, static_cast<std::uint32_t>(moved));
    message.resize(message.size() + data.size());
    std::ranges::copy_backward(data, message.end());
    return message;
}

std::vector<std::uint8_t> encodeUnlinkAnswer(std::uint32_t sequence, std::int32_t status) {
    return answer(unlinkAnswer, sequence, status);
}

} // namespace cabslot::simulator
