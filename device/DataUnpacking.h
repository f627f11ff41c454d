// Extracts frames from the received byte stream and adds the CRC to outgoing frames.
//
// The unpacker is a state machine with seven states that works on FrameBuffer. It runs on the
// device thread and keeps its state when a device is removed. docs/protocol.md describes the frame.
#pragma once

#include <array>
#include <cstdint>

namespace cabslot {

/// The unpacker's states, the values of `Step`.
enum UnpackStep : std::uint8_t {
    unpackSync1,
    unpackSync2,
    unpackLength,
    unpackBody,
    unpackCheck,
    unpackDeliver,
    unpackResync,
};

/// Runs the state machine until a state leaves `Step` unchanged: it needs more bytes, or has just
/// dropped a stray one. Passes every valid frame to CMD_Callback.
void DUP_Unpack();

void DUP_UnpackCASE0(); ///< sync 1: reads one byte and drops it unless it is AA
void DUP_UnpackCASE1(); ///< sync 2: must be 55
void DUP_UnpackCASE2(); ///< length: at most 1018
void DUP_UnpackCASE3(); ///< body: waits for the whole rest of the frame
void DUP_UnpackCASE4(); ///< check: compares the CRCs
void DUP_UnpackCASE5(); ///< deliver: passes the frame on, keeps the bytes after it
void DUP_UnpackCASE6(); ///< resync: looks for the next AA after the first byte

/// The handlers, indexed by `Step`.
extern const std::array<void (*)(), 7> CaseFundList;

/// Adds the CRC to the frame and sends it: 1 sent, 0 failed. `frame` holds sync, L, command and
/// payload and is at least L + 6 bytes long.
int SendUartCmd(std::uint8_t* frame);

} // namespace cabslot
