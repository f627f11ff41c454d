// What holds of the receiving side's process-wide values between any two calls.
#pragma once

#include "device/DataUnpacking.h"
#include "device/SharedState.h"
#include "fuzz/Fuzzing.h"

namespace cabslot::fuzz {

inline void demandReceiverInOrder() {
    demand(rx_buffer_count <= rxBufferSize, "no more bytes are stored than fit");
    demand(rx_buffer_readp < rxBufferSize, "the read index is one");
    demand(rx_buffer_writep == (rx_buffer_readp + rx_buffer_count) % rxBufferSize,
           "the write index is as many bytes ahead as are stored");
    demand(vaildDataCount <= FrameBuffer.size(), "a frame in the making fits");
    demand(Step <= unpackBody, "the unpacker rests only where it waits for bytes");
    demand((Step == unpackSync1) == (vaildDataCount == 0), "it holds bytes when inside a frame");
    demand(IRNameArr.count() == 0 || IRNameArr.count() == slotCount, "names come all four");
}

/// One tick of the read timer.
inline void tick() {
    DUP_Unpack();
    demandReceiverInOrder();
}

} // namespace cabslot::fuzz
