// Frames out of the received byte stream, and the CRC onto outgoing frames.
//
// The unpacker is a machine of seven states over FrameBuffer; it runs on the device thread and
// keeps its state when a device goes. See docs/protocol.md for the frame.
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

/// Runs states until one leaves `Step` unchanged: it needs more bytes, or it has just dropped one
/// stray byte. Every good frame goes to CMD_Callback.
void DUP_Unpack();

void DUP_UnpackCASE0(); ///< sync 1: takes one byte; anything but AA is dropped
void DUP_UnpackCASE1(); ///< sync 2: must be 55
void DUP_UnpackCASE2(); ///< length: at most 1018
void DUP_UnpackCASE3(); ///< body: waits for the whole rest of the frame
void DUP_UnpackCASE4(); ///< check: compares the CRCs
void DUP_UnpackCASE5(); ///< deliver: hands the frame on, keeps surplus bytes behind it
void DUP_UnpackCASE6(); ///< resync: looks for the next AA behind the first byte held

/// The handlers, indexed by `Step`.
extern const std::array<void (*)(), 7> CaseFundList;

/// Completes the frame with its CRC and sends it: 1 sent, 0 failed. `frame` holds sync, L, command
/// and payload and is at least L + 6 bytes long.
int SendUartCmd(std::uint8_t* frame);

} // namespace cabslot
