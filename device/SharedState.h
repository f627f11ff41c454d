// Every process-wide value of the device link, in one place.
//
// There are two threads. The device thread receives and sends, and owns everything not marked
// otherwise; the main thread stages an upload and polls for its end. A value that both use is an
// atomic, has its own lock, or is published by isInportIR: the main thread writes irdatabuff,
// SendFileName, SendisInternalIR and armWithLastFrame, then stores 1 in isInportIR (release); the
// device thread reads the flag (acquire) before it reads them; the main thread does not touch them
// again until it reads 0.
#pragma once

#include "base/Pedal.h"
#include "device/Frame.h"
#include "device/HIDManager.h"
#include "device/SlotTexts.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace cabslot {

class DeviceObject;

// --- Receiving: the ring buffer and the unpacker -------------------------------------------------

inline constexpr std::uint32_t rxBufferSize = 10240;

extern std::array<std::uint8_t, rxBufferSize> rx_buffer;   ///< received bytes, a ring
extern std::uint32_t rx_buffer_count;                      ///< bytes stored now
extern std::uint32_t rx_buffer_writep;                     ///< next write index, 0 to 10239
extern std::uint32_t rx_buffer_readp;                      ///< next read index, 0 to 10239
extern std::array<std::uint8_t, maxFrameSize> FrameBuffer; ///< the frame being assembled
extern const FrameView pFrameStruct;                       ///< FrameBuffer seen as a frame
extern std::uint16_t vaildDataCount; ///< bytes received so far at FrameBuffer's start
extern std::uint8_t Step;            ///< the unpacker's state, 0 to 6

// --- Sending: the scheduler and the frame builders -----------------------------------------------

inline constexpr std::int32_t schedulerStart = 1000; ///< the scheduler's first state

extern std::array<std::uint8_t, 10240> DataBuff; ///< the one outgoing frame
extern std::int32_t
    datelen; ///< next write offset in DataBuff, then its length L; 0: nothing to send
extern std::int32_t SendStep;           ///< the scheduler's state
extern std::uint8_t IsRecDataEnd;       ///< 1 while the scheduler runs: prevents re-entry
extern std::uint8_t iSReset;            ///< 1: RESET_SendData has something to send
extern std::atomic<std::uint32_t> step; ///< upload step 0 to 6; main reads it for progress

// --- An upload: written by main, read by the device thread ---------------------------------------

extern std::atomic<std::uint8_t> isInportIR; ///< main writes 1: upload; device 0: all frames built
extern std::atomic<std::uint32_t>
    CheckMCUInportIR_Finish; ///< 1: waiting for the confirmation; device writes 0 when it comes
extern std::atomic<std::uint32_t> IR_InportNumber; ///< target slot, 1 to 4; the low byte is sent
extern std::array<std::uint32_t, irPointCount>
    irdatabuff;                                   ///< the IR: 24-bit samples in the low three bytes
extern std::array<std::uint8_t, 20> SendFileName; ///< the IR's name; bytes 0 to 14 are sent
extern std::uint8_t SendisInternalIR;             ///< 1: the IR being sent is a factory IR
extern std::uint8_t
    armWithLastFrame; ///< 1: the device thread sets CheckMCUInportIR_Finish with the last frame

// --- What the slots hold: written by both, index 0 to 3 ------------------------------------------

extern SlotTexts IRNameArr; ///< display names; empty until the pedal's data has come
extern std::array<std::atomic<std::uint8_t>, slotCount> isInternalIRArray; ///< 1: a factory IR
extern SlotTexts isInternalIRArray2; ///< the same flags as one-character texts

// --- The device ----------------------------------------------------------------------------------

extern DeviceObject* object;    ///< the one HIDClass, which holds KVOValue, or null
extern HIDDeviceRef HID_Device; ///< the current device, or null
extern std::atomic<std::uint8_t> isDeviceConnent; ///< 1: a device is current
extern std::int32_t HIDDeviceID_int;            ///< 22275 turns the identity handshake on; stays 0
extern std::atomic<std::int32_t> deviceDidTrue; ///< 1: the handshake has succeeded
extern std::uint8_t deviceTrue;                 ///< 1: the last identity comparison matched
extern std::uint8_t isVersionTrue;              ///< 1: the firmware version is accepted
extern char deviceModel;                        ///< the identified device's model character
extern std::atomic<std::int32_t> deveiceIndex;  ///< the current device's index in deviceRefs
extern std::atomic<std::int32_t> timer;         ///< checkUSBDevice: probes sent to this device
extern std::atomic<std::int32_t> checkNumber;   ///< checkUSBDevice: passes over all devices
extern std::array<std::uint8_t, 80>
    deviceInfoBuff; ///< checkUSBDevice's probe is bytes 2 to 9; all 0

/// Resets every value above to its initial value, for tests that run in one process. The device
/// thread must not be running. The programs never call it.
void resetSharedState();

} // namespace cabslot
