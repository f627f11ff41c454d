// The commands: what the device's frames do here, and what goes into the host's frames.
//
// Everything runs on the device thread. The wire's layouts are in docs/protocol.md.
#pragma once

#include <cstdint>

namespace cabslot {

/// Command bytes (offset 4 of a frame).
inline constexpr std::uint8_t commandImportIR = 0xE9; ///< host: one of an upload's seven frames
inline constexpr std::uint8_t commandIdle = 0xED;     ///< never sent: the scheduler's idle state
inline constexpr std::uint8_t commandRequestAllData = 0xEF; ///< host: send me your data
inline constexpr std::uint8_t commandAllData = 0xF7;        ///< device: slot names and factory flag
inline constexpr std::uint8_t commandImportFinished = 0xF8; ///< device: the upload is stored

/// Steps of an upload: the name, then six planes of the samples.
inline constexpr std::uint32_t uploadFrameCount = 7;

/// Handles one whole frame whose CRC matched; unknown commands are ignored.
void CMD_Callback(const std::uint8_t* frame);

/// Takes the four names and the factory flag into IRNameArr, isInternalIRArray and
/// isInternalIRArray2, then raises deviceDataReceived. `payload` must have 78 readable bytes; a
/// shorter frame's missing bytes are whatever FrameBuffer still holds.
void Alldata_ReveiveData(const std::uint8_t* payload);

/// Clears CheckMCUInportIR_Finish; the payload is not read.
void ImportIRSuccess_ReveiveData(const std::uint8_t* payload);

/// The builders fill length and payload of DataBuff and leave L in datelen, or 0 when there is
/// nothing to send. Sync and command bytes are the scheduler's.

/// The request for all data: no payload.
void AllPreset_SendData();

/// While isInportIR is 1: the frame of the current upload step, and on to the next. The seventh
/// clears isInportIR and, if armWithLastFrame is 1, sets CheckMCUInportIR_Finish before that.
void IMPORTIR_SendData();

/// While iSReset is 1: a frame without payload. Nothing schedules it.
void RESET_SendData();

} // namespace cabslot
