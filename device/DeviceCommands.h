// The commands: how the device's frames are handled, and what the host's frames contain.
//
// Everything runs on the device thread. docs/protocol.md describes the payloads.
#pragma once

#include <cstdint>

namespace cabslot {

/// Command bytes (offset 4 of a frame).
inline constexpr std::uint8_t commandImportIR = 0xE9; ///< host: one of an upload's seven frames
inline constexpr std::uint8_t commandIdle = 0xED;     ///< never sent: the scheduler's idle state
inline constexpr std::uint8_t commandRequestAllData = 0xEF; ///< host: send me your data
inline constexpr std::uint8_t commandAllData = 0xF7;        ///< device: slot names and factory flag
inline constexpr std::uint8_t commandImportFinished = 0xF8; ///< device: the upload is stored

/// Steps of an upload: the name, then six byte planes of the samples.
inline constexpr std::uint32_t uploadFrameCount = 7;

/// Handles a complete frame whose CRC matched; ignores unknown commands.
void CMD_Callback(const std::uint8_t* frame);

/// Copies the four names and the factory flag into IRNameArr, isInternalIRArray and
/// isInternalIRArray2, then raises deviceDataReceived. `payload` must have 78 readable bytes; for a
/// shorter frame, the missing bytes are whatever FrameBuffer still holds.
void Alldata_ReveiveData(const std::uint8_t* payload);

/// Clears CheckMCUInportIR_Finish; the payload is not read.
void ImportIRSuccess_ReveiveData(const std::uint8_t* payload);

/// The builders write DataBuff's length and payload, and set datelen to L, or to 0 if there is
/// nothing to send. The scheduler writes the sync and command bytes.

/// The request for all data: no payload.
void AllPreset_SendData();

/// While isInportIR is 1: builds the current upload step's frame and advances the step. The seventh
/// clears isInportIR and, if armWithLastFrame is 1, sets CheckMCUInportIR_Finish before that.
void IMPORTIR_SendData();

/// While iSReset is 1: builds a frame without payload. Nothing schedules it.
void RESET_SendData();

} // namespace cabslot
