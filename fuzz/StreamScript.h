// Streams of frames and stray bytes, and how they are cut into pieces. Random bytes hardly ever
// contain a valid CRC, so the input is a script whose steps each add something to the stream.
#pragma once

#include "fuzz/StreamRules.h"

namespace cabslot::fuzz {

/// A script's steps: the step's number, then the fields named here. `text` is a count byte and that
/// many bytes. makeSeeds.py uses the same numbers.
enum ScriptStep : std::uint8_t {
    strayBytes,  ///< text: added unchanged
    frame,       ///< text: a valid frame around command and payload
    filledFrame, ///< L (two bytes), fill: a valid frame of that L; may be too long to be received
    spoiltFrame, ///< text, place, mask: a frame with one byte changed
    wrap,        ///< count: puts a valid frame around the stream's last bytes
    scriptSteps,
};

inline constexpr std::size_t longestFilled = 1100; // longer than the longest that is received

inline Bytes frameAround(View body) {
    Bytes frame = {0xAA, 0x55, static_cast<std::uint8_t>(body.size()),
                   static_cast<std::uint8_t>(body.size() >> 8)};
    append(frame, body);
    const unsigned crc = crcOf(View(frame).subspan(2));
    frame.push_back(static_cast<std::uint8_t>(crc >> 8));
    frame.push_back(static_cast<std::uint8_t>(crc));
    return frame;
}

inline void wrapEnd(Bytes& stream, std::size_t count) {
    const Bytes body(stream.end() - static_cast<std::ptrdiff_t>(std::min(count, stream.size())),
                     stream.end());
    stream.resize(stream.size() - body.size());
    append(stream, frameAround(body));
}

inline void addStep(Input& script, Bytes& stream) {
    const int step = script.byte() % scriptSteps;
    if (step == strayBytes)
        return append(stream, script.counted());
    if (step == wrap)
        return wrapEnd(stream, script.byte());
    if (step == filledFrame) {
        const std::size_t length = script.number16() % longestFilled;
        return append(stream, frameAround(Bytes(length, script.byte())));
    }
    Bytes added = frameAround(script.counted());
    if (step == spoiltFrame) {
        const std::size_t place = script.byte() % added.size();
        added[place] ^= static_cast<std::uint8_t>(script.byte() | 1);
    }
    append(stream, added);
}

/// Runs the script to its end, or until the stream has at least `limit` bytes.
inline Bytes streamFromScript(Input& script, std::size_t limit) {
    Bytes stream;
    while (!script.empty() && stream.size() < limit)
        addStep(script, stream);
    return stream;
}

/// The pieces in which a stream arrives: a count byte, then one byte for each piece, repeated.
/// After the first 100 all are whole reports, because single bytes to the end would take long.
class Pieces {
public:
    struct Piece {
        std::size_t size;  ///< 1 to 64 bytes
        std::size_t ticks; ///< after it, 0 to 3
    };

    explicit Pieces(Input& input) : plan_(input.counted()) {}

    Piece next() {
        if (plan_.empty() || position_ == mostSmall)
            return {64, 1};
        const std::uint8_t plan = plan_[position_++ % plan_.size()];
        return {(plan & 0x3FU) + 1U, static_cast<std::size_t>(plan >> 6)};
    }

private:
    static constexpr std::size_t mostSmall = 100;
    View plan_;
    std::size_t position_ = 0;
};

/// `expected` are the valid frames in `stream`. The pedal's parser has no ticks: it is compared at
/// the stream's end.
inline void checkPedalFinds(View expected, View stream, Pieces pieces) {
    simulator::FrameParser parser;
    Bytes found;
    std::size_t skipped = 0;
    for (std::size_t fed = 0; fed < stream.size();) {
        const std::size_t size = std::min(pieces.next().size, stream.size() - fed);
        for (const simulator::Frame& frame : parser.feed(stream.subspan(fed, size)))
            append(found, frame.command ? simulator::encodeFrame(*frame.command, frame.payload)
                                        : Bytes{0xAA, 0x55, 0, 0, 0xFF, 0xFF});
        fed += size;
        skipped += parser.takeSkipped();
        check(fed - found.size() - skipped < 1024, "less than a frame is held, no byte twice");
    }
    check(std::ranges::equal(found, expected), "the pedal finds the reference's frames");
}

} // namespace cabslot::fuzz
