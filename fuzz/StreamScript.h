// Streams of frames and rubbish, and how they are cut into pieces. Random bytes hardly ever hold a
// good CRC, so the input is a script whose steps each add something to the stream.
#pragma once

#include "fuzz/Fuzzing.h"

#include <cstddef>

namespace cabslot::fuzz {

/// A script's steps: their number, then what is named here. `text` is a count byte and so many
/// bytes. makeSeeds.py writes scripts by the same numbers.
enum class ScriptStep {
    strayBytes,  ///< text: added as they are
    frame,       ///< text: a good frame around command and payload
    filledFrame, ///< L (two bytes), fill: a good frame of that L; may be longer than is received
    spoiltFrame, ///< text, place, mask: a frame with one byte changed
    cutFrame,    ///< text, count: a frame's first bytes
    header,      ///< L (two bytes): AA 55 and L; what follows is taken for the body
    wrap,        ///< count: puts a good frame around the stream's last bytes
    importFrame, ///< step, slot, flag, fill
    wholeImport, ///< slot, flag, fill: the seven frames of an upload
    allData,     ///< flag, fill: the pedal's all-data frame
    count,
};

/// Follows the script to its end, or until the stream has at least `limit` bytes.
Bytes streamFromScript(Input& script, std::size_t limit);

/// The pieces in which a stream comes: a count byte, then one byte a piece, again and again.
class Pieces {
public:
    struct Piece {
        std::size_t size;  ///< 1 to 64 bytes
        std::size_t ticks; ///< that pass behind it, 0 to 3
    };

    explicit Pieces(Input& input) : plan_(input.bytes(input.byte())) {}

    Piece next();

private:
    Bytes plan_;
    std::size_t position_ = 0;
};

} // namespace cabslot::fuzz
