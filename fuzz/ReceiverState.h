// Invariants of the receiving side's process-wide values between two calls.
#pragma once

#include "device/DataUnpacking.h"
#include "device/SharedState.h"
#include "fuzz/Fuzzing.h"

namespace cabslot::fuzz {

inline void checkReceiverInOrder() {
    check(rx_buffer_count <= rxBufferSize, "the count fits the ring");
    check(rx_buffer_readp < rxBufferSize, "the read index is in range");
    check(rx_buffer_writep == (rx_buffer_readp + rx_buffer_count) % rxBufferSize,
          "the write index is ahead by the count");
    check(vaildDataCount <= FrameBuffer.size(), "an incomplete frame fits its buffer");
    check(Step <= unpackBody, "between calls the unpacker waits for bytes");
    check((Step == unpackSync1) == (vaildDataCount == 0), "bytes are held inside a frame only");
    check(IRNameArr.count() == 0 || IRNameArr.count() == slotCount, "there are four names or none");
}

/// One tick of the read timer.
inline void tick() {
    DUP_Unpack();
    checkReceiverInOrder();
}

} // namespace cabslot::fuzz
