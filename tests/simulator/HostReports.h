// What a host sends and reads, for the tests of the simulated pedal.
#pragma once

#include "simulator/pedal/PedalFrames.h"
#include "simulator/pedal/PedalReplies.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cabslot::simulator::testing {

using Bytes = std::vector<std::uint8_t>;

inline const Bytes zeroLengthFrame{0xAA, 0x55, 0x00, 0x00, 0xFF, 0xFF};
inline const Bytes allDataRequest{0xAA, 0x55, 0x01, 0x00, 0xEF, 0xC4, 0x0E};
inline const Bytes confirmation{0xAA, 0x55, 0x01, 0x00, 0xF8, 0xA6, 0xD8};

/// Reports full to the brim; the padding of the last is not 0, as with a host that reuses its
/// buffer.
inline std::vector<Report> cutIntoReports(std::span<const std::uint8_t> stream) {
    std::vector<Report> reports;
    while (!stream.empty()) {
        const std::size_t count = std::min<std::size_t>(63, stream.size());
        Report& report = reports.emplace_back();
        report.fill(0xAA);
        report[0] = static_cast<std::uint8_t>(count);
        std::copy_n(stream.begin(), count, report.begin() + 1);
        stream = stream.subspan(count);
    }
    return reports;
}

/// The stream that the reports carry.
inline Bytes joinReports(std::span<const Report> reports) {
    Bytes stream;
    for (const Report& report : reports)
        stream.insert(stream.end(), report.begin() + 1, report.begin() + 1 + report[0]);
    return stream;
}

/// An import frame. Steps 1 to 6 carry the byte 0xA0 + step once, then 511 times 0x10 * step, so
/// that every plane can be told from every other.
inline Bytes importFrame(std::uint8_t step, std::uint8_t slot, std::uint8_t flag,
                         const std::string& name = "Cab") {
    Bytes payload(3 + (step == 0 ? 15 : 512), static_cast<std::uint8_t>(0x10 * step));
    payload[0] = step;
    payload[1] = slot;
    payload[2] = flag;
    payload[3] = static_cast<std::uint8_t>(0xA0 + step);
    if (step == 0) {
        std::fill(payload.begin() + 3, payload.end(), std::uint8_t{' '});
        std::copy(name.begin(), name.end(), payload.begin() + 3);
    }
    return encodeFrame(0xE9, payload);
}

inline Bytes wholeImport(std::uint8_t slot, std::uint8_t flag, const std::string& name = "Cab") {
    Bytes stream;
    for (std::uint8_t step = 0; step <= 6; ++step) {
        const Bytes frame = importFrame(step, slot, flag, name);
        stream.insert(stream.end(), frame.begin(), frame.end());
    }
    return stream;
}

using cabslot::testing::TempFolder;

} // namespace cabslot::simulator::testing
