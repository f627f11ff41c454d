// Frames found in a stream by the rules of docs/protocol.md alone: a reference for the unpacker and
// for the simulated pedal's parser.
//
// It shares no code with the unpacker and works differently: it sees the whole stream at once and
// has neither states nor a buffer. The CRC is the simulated pedal's, as a table.
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

/// What an AA byte begins.
struct Verdict {
    std::size_t looked; ///< bytes needed to decide; undecided if more than there are
    bool good;          ///< these bytes are a valid frame
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

/// A valid frame, or a stray byte: one outside of anything that looked like a frame. Discarding a
/// stray byte ends the tick; discarding bytes of an invalid frame does not.
struct StreamEvent {
    bool isFrame;
    std::size_t begin, end; ///< its bytes in the stream
    std::size_t need;       ///< bytes of the stream that must have arrived first
};

/// All events in `stream`, in order.
inline std::vector<StreamEvent> eventsOf(View stream) {
    std::vector<StreamEvent> events;
    std::size_t looked = 0; // the bytes before this have been examined
    for (std::size_t at = 0; at < stream.size();) {
        if (stream[at] == 0xAA) {
            const Verdict verdict = judge(stream.subspan(at));
            looked = std::max(looked, at + verdict.looked);
            if (looked > stream.size())
                break; // its end has not arrived
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

/// The stream's events, tick by tick.
class Expectation {
public:
    explicit Expectation(View stream) : stream_(stream), events_(eventsOf(stream)) {}

    /// One tick, after the first `come` bytes have arrived.
    void passTick(std::size_t come) {
        while (!done() && events_[next_].need <= come) {
            const StreamEvent& event = events_[next_++];
            if (!event.isFrame)
                return; // one stray byte per tick
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
