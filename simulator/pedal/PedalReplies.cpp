#include "simulator/pedal/PedalReplies.h"

#include "simulator/pedal/PedalFrames.h"

#include <algorithm>
#include <span>

namespace cabslot::simulator {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t allDataCommand = 0xF7;
constexpr std::uint8_t confirmationCommand = 0xF8;

// The payload of the all-data frame; bytes not listed are 0.
constexpr std::size_t allDataFlagOffset = 2;
constexpr std::size_t allDataNamesOffset = 14;
constexpr std::size_t allDataSize = allDataNamesOffset + slotCount * slotNameSize;

// Ends with AA, so that the host sees the reply's own sync bytes as AA AA 55.
constexpr std::uint8_t strayBytes[] = {0x00, 0x13, 0x55, 0x37, 0xAA};

// A frame that hosts do not know. Its 73 bytes end inside a report, whether reports carry 63 bytes
// or 7, and the reply begins right after it.
constexpr std::uint8_t unknownCommand = 0xF1;
constexpr std::size_t unknownPayloadSize = 67 - 1;

// Each of these frames fills a report, so a host that drops reports drops whole frames.
constexpr std::size_t floodFrames = 100000;
constexpr std::size_t floodPayloadSize = reportCapacity - 7;

constexpr std::size_t splitCapacity = 7;

void append(Bytes& stream, std::span<const std::uint8_t> bytes) {
    stream.insert(stream.end(), bytes.begin(), bytes.end());
}

std::vector<Report> cut(std::span<const std::uint8_t> stream, std::size_t capacity) {
    std::vector<Report> reports;
    while (!stream.empty()) {
        const std::size_t count = std::min(capacity, stream.size());
        Report& report = reports.emplace_back(Report{});
        report[0] = static_cast<std::uint8_t>(count);
        std::copy_n(stream.begin(), count, report.begin() + 1);
        stream = stream.subspan(count);
    }
    return reports;
}

std::vector<Report> reply(std::uint8_t command, const Bytes& payload, const Faults& faults) {
    Bytes stream;
    if (faults.merge)
        append(stream, encodeFrame(unknownCommand, Bytes(unknownPayloadSize)));
    if (faults.garbage)
        append(stream, strayBytes);
    append(stream, encodeFrame(command, payload));
    if (faults.corruptCrc)
        stream.back() ^= 0x01;
    return cut(stream, faults.split ? splitCapacity : reportCapacity);
}

} // namespace

std::vector<Report> allDataReply(const PedalStore& store, const Faults& faults) {
    Bytes payload(allDataSize);
    // One flag byte covers four slots, so it is 1 only while all four hold factory IRs: a host must
    // never take a user's IR for a factory IR.
    payload[allDataFlagOffset] = store.allFactory() ? 1 : 0;
    auto to = payload.begin() + allDataNamesOffset;
    for (std::size_t i = 0; i < slotCount; ++i)
        to = std::copy(store.slot(i).name.begin(), store.slot(i).name.end(), to);
    std::vector<Report> reports = reply(allDataCommand, payload, faults);
    if (faults.flood) {
        const Bytes frame = encodeFrame(unknownCommand, Bytes(floodPayloadSize));
        reports.insert(reports.end(), floodFrames, cut(frame, reportCapacity).front());
    }
    return reports;
}

std::vector<Report> confirmationReply(const Faults& faults) {
    return reply(confirmationCommand, {}, faults);
}

} // namespace cabslot::simulator
