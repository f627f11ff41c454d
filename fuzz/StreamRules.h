// Frames found in a stream by the rules of docs/protocol.md alone: a second opinion on the unpacker
// and on the simulated pedal's parser.
//
// It shares no code with the unpacker and is another kind of thing: no states, no buffer, it sees
// the whole stream at once. The CRC is the pedal's, of which a table of bytes is made.
#pragma once

#include "fuzz/Fuzzing.h"
#include "simulator/pedal/PedalFrames.h"

#include <array>

namespace cabslot::fuzz {

inline unsigned crcOf(View bytes) {
    static const auto table = [] {
        std::array<unsigned, 256> crcs{};
        for (unsigned i = 0; i < crcs.size(); ++i) {
            const auto byte = static_cast<std::uint8_t>(i);
            crcs[i] = simulator::crcOf({&byte, 1}) ^ 0xFFFFU;
        }
        return crcs;
    }();
    unsigned crc = 0;
    for (const std::uint8_t byte : bytes)
        crc = (crc << 8 ^ table[crc >> 8 ^ byte]) & 0xFFFF;
    return crc ^ 0xFFFF;
}

/// What stands at an AA.
struct Verdict {
    std::size_t looked; ///< bytes to look at before it is known; more than there are: not known yet
    bool good;          ///< it is a frame, of just these bytes
};

inline Verdict judge(View rest) {
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
    return {size, crc == crcOf(rest.subspan(2, length + 2))};
}

/// A good frame, or a stray byte: one outside of whatever looked like a frame. A stray byte ends
/// the tick in which it is thrown away; what was thrown away inside a bad frame does not.
struct StreamEvent {
    bool isFrame;
    std::size_t begin, end; ///< its bytes in the stream
    std::size_t need;       ///< it happens when so many bytes of the stream have come
};

/// All that happens in `stream`, in order.
inline std::vector<StreamEvent> eventsOf(View stream) {
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

/// Goes through the stream's events tick by tick.
class Expectation {
public:
    explicit Expectation(View stream) : stream_(stream), events_(eventsOf(stream)) {}

    /// What can happen while the first `come` bytes are there happens.
    void passTick(std::size_t come) {
        while (!done() && events_[next_].need <= come) {
            const StreamEvent& event = events_[next_++];
            if (!event.isFrame)
                return; // one stray byte a tick
            append(delivered_, stream_.subspan(event.begin, event.end - event.begin));
        }
    }

    bool done() const { return next_ == events_.size(); }
    const Bytes& delivered() const { return delivered_; }

private:
    View stream_;
    std::vector<StreamEvent> events_;
    std::size_t next_ = 0;
    Bytes delivered_;
};

} // namespace cabslot::fuzz
