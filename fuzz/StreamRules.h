// Frames found in a stream by the rules of docs/protocol.md alone: a second opinion on the unpacker
// and on the simulated pedal's parser.
//
// It shares no code with the unpacker and is another kind of thing: no states, no buffer, it sees
// the whole stream at once. The CRC is the pedal's, which is computed bit by bit.
#pragma once

#include "fuzz/Fuzzing.h"

#include <cstddef>
#include <vector>

namespace cabslot::fuzz {

/// A good frame, or a stray byte: one outside of whatever looked like a frame. A stray byte ends
/// the tick in which it is thrown away; what was thrown away inside a bad frame does not.
struct StreamEvent {
    bool isFrame;
    std::size_t begin, end; ///< its bytes in the stream
    std::size_t need;       ///< it happens when so many bytes of the stream have come
};

/// All that happens in `stream`, in order.
std::vector<StreamEvent> eventsOf(View stream);

} // namespace cabslot::fuzz
