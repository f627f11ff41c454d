#include "fuzz/StreamRules.h"

#include "simulator/pedal/PedalFrames.h"

#include <algorithm>

namespace cabslot::fuzz {

namespace {

/// What stands at an AA.
struct Verdict {
    std::size_t looked; ///< bytes to look at before it is known; more than there are: not known yet
    bool good;          ///< it is a frame, of just these bytes
};

Verdict judge(View rest) {
    if (rest.size() < 2 || rest[1] != 0x55)
        return {2, false};
    if (rest.size() < 4)
        return {4, false};
    const std::size_t length = rest[2] + std::size_t{256} * rest[3];
    if (length > 1018)
        return {4, false};
    const std::size_t size = length + 6;
    if (rest.size() < size)
        return {size, false};
    const unsigned crc = rest[length + 4] * 256U + rest[length + 5];
    return {size, crc == simulator::crcOf(rest.subspan(2, length + 2))};
}

} // namespace

std::vector<StreamEvent> eventsOf(View stream) {
    std::vector<StreamEvent> events;
    std::size_t looked = 0; // the stream's bytes up to here have been looked at
    for (std::size_t at = 0; at < stream.size();) {
        if (stream[at] == 0xAA) {
            const Verdict verdict = judge(stream.subspan(at));
            looked = std::max(looked, at + verdict.looked);
            if (looked > stream.size())
                break; // its end is still to come
            if (verdict.good)
                events.push_back({true, at, at + verdict.looked, looked});
            at += verdict.good ? verdict.looked : 1;
        } else {
            if (at >= looked)
                events.push_back({false, at, at + 1, at + 1});
            ++at;
        }
    }
    return events;
}

} // namespace cabslot::fuzz
