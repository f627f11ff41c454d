#include "device/DataUnpacking.h"

#include "device/Crc16.h"
#include "device/DeviceCommands.h"
#include "device/HIDReports.h"
#include "device/ReceiveBuffer.h"
#include "device/SharedState.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::uint32_t lengthFieldEnd = frameCommandOffset;

std::uint32_t frameSize() {
    return pFrameStruct.length() + static_cast<std::uint32_t>(frameOverhead);
}

std::int32_t checkedBytes(std::uint32_t length) {
    return static_cast<std::int32_t>(length + 2); // the length field itself, command, payload
}

// Completes the frame's first `wanted` bytes; false, with nothing read, if too few have arrived.
bool fillTo(std::uint32_t wanted) {
    if (vaildDataCount >= wanted)
        return true;
    if (getRX_buffer(wanted - vaildDataCount, FrameBuffer.data() + vaildDataCount) == 0)
        return false;
    vaildDataCount = static_cast<std::uint16_t>(wanted);
    return true;
}

} // namespace

const std::array<void (*)(), 7> CaseFundList = {
    DUP_UnpackCASE0, DUP_UnpackCASE1, DUP_UnpackCASE2, DUP_UnpackCASE3,
    DUP_UnpackCASE4, DUP_UnpackCASE5, DUP_UnpackCASE6,
};

void DUP_Unpack() {
    static std::uint8_t STEPCP; // the state at the start of this iteration
    do {
        STEPCP = Step;
        CaseFundList[Step]();
    } while (Step != STEPCP);
}

void DUP_UnpackCASE0() {
    if (getRX_buffer(1, FrameBuffer.data()) == 0)
        return;
    // Any other byte is dropped. `Step` stays the same, which ends the call: one call drops only
    // one stray byte, as the protocol requires.
    if (FrameBuffer[0] == frameSync1) {
        vaildDataCount = 1;
        Step = unpackSync2;
    }
}

void DUP_UnpackCASE1() {
    if (fillTo(2))
        Step = FrameBuffer[1] == frameSync2 ? unpackLength : unpackResync;
}

void DUP_UnpackCASE2() {
    if (fillTo(lengthFieldEnd))
        Step = pFrameStruct.length() <= maxFrameLength ? unpackBody : unpackResync;
}

void DUP_UnpackCASE3() {
    if (fillTo(frameSize()))
        Step = unpackCheck;
}

void DUP_UnpackCASE4() {
    const std::uint32_t length = pFrameStruct.length();
    const std::uint8_t* crc = FrameBuffer.data() + frameCommandOffset + length;
    const unsigned received = static_cast<unsigned>(crc[0] << 8) | crc[1];
    const unsigned computed =
        crc16_Count(FrameBuffer.data() + frameLengthOffset, checkedBytes(length));
    Step = received == computed ? unpackDeliver : unpackResync;
}

void DUP_UnpackCASE5() {
    CMD_Callback(FrameBuffer.data());
    const std::uint32_t size = frameSize();
    if (vaildDataCount == size) {
        vaildDataCount = 0;
        Step = unpackSync1;
        return;
    }
    // The surplus goes to offset 1, because the resync starts its search there.
    std::copy(FrameBuffer.begin() + size, FrameBuffer.begin() + vaildDataCount,
              FrameBuffer.begin() + 1);
    vaildDataCount = static_cast<std::uint16_t>(1 + vaildDataCount - size);
    Step = unpackResync;
}

void DUP_UnpackCASE6() {
    const auto held = FrameBuffer.begin() + vaildDataCount;
    const auto sync = std::find(std::min(FrameBuffer.begin() + 1, held), held, frameSync1);
    vaildDataCount = static_cast<std::uint16_t>(held - sync);
    std::copy(sync, held, FrameBuffer.begin());
    Step = vaildDataCount > 0 ? unpackSync2 : unpackSync1;
}

int SendUartCmd(std::uint8_t* frame) {
    const std::uint32_t length = FrameView(frame).length();
    const unsigned crc = crc16_Count(frame + frameLengthOffset, checkedBytes(length));
    frame[frameCommandOffset + length] = static_cast<std::uint8_t>(crc >> 8);
    frame[frameCommandOffset + length + 1] = static_cast<std::uint8_t>(crc);
    return WriteHid(frame, static_cast<std::int32_t>(length + frameOverhead));
}

} // namespace cabslot
