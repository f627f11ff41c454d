#include "device/DeviceCommands.h"

#include "device/DeviceObject.h"
#include "device/SharedState.h"

namespace cabslot {

namespace {

// The all-data payload; the bytes between these fields are not read.
constexpr std::size_t slotFlagOffset = 2;
constexpr std::size_t firstNameOffset = 14;
static_assert(firstNameOffset + slotCount * slotNameSize <= maxFrameSize - framePayloadOffset);

constexpr std::uint32_t lastUploadStep = uploadFrameCount - 1;
constexpr std::int32_t nothingAppended = framePayloadOffset;
constexpr std::size_t halfBlock = irPointCount / 2; // samples in a frame, one byte of each

void storeLength() {
    DataBuff[frameLengthOffset] = static_cast<std::uint8_t>(datelen);
    DataBuff[frameLengthOffset + 1] = static_cast<std::uint8_t>(datelen >> 8);
}

void append(std::uint32_t value) {
    DataBuff[static_cast<std::size_t>(datelen++)] = static_cast<std::uint8_t>(value);
}

void appendName() {
    for (std::size_t i = 0; i < sentNameSize; ++i)
        append(SendFileName[i]);
}

void appendPlane(std::size_t firstSample, unsigned shift) {
    for (std::size_t k = firstSample; k < firstSample + halfBlock; ++k)
        append(irdatabuff[k] >> shift);
}

// Step 0 is the name, 1 to 3 are the first half's high, middle and low bytes, 4 to 6 the second's.
void appendUploadStep(std::uint32_t uploadStep) {
    if (uploadStep == 0) {
        appendName();
    } else if (uploadStep <= lastUploadStep) {
        const std::uint32_t plane = uploadStep - 1;
        appendPlane(plane < 3 ? 0 : halfBlock, 16 - 8 * (plane % 3));
    }
}

} // namespace

void CMD_Callback(const std::uint8_t* frame) {
    const std::uint8_t* payload = frame + framePayloadOffset;
    switch (frame[frameCommandOffset]) {
    case commandAllData:
        Alldata_ReveiveData(payload);
        break;
    case commandImportFinished:
        ImportIRSuccess_ReveiveData(payload);
        break;
    default:
        break;
    }
}

void Alldata_ReveiveData(const std::uint8_t* payload) {
    // The pedal sends one flag for all four slots.
    const std::uint8_t flag = payload[slotFlagOffset];
    for (std::size_t i = 0; i < slotCount; ++i) {
        isInternalIRArray[i] = flag != 0 ? 1 : 0;
        isInternalIRArray2.setCharacters(i, {&flag, 1}); // the raw byte, not its digit
        IRNameArr.setName(i, {payload + firstNameOffset + i * slotNameSize, slotNameSize});
    }
    raiseDeviceEvent(deviceDataReceived);
}

void ImportIRSuccess_ReveiveData(const std::uint8_t* /*payload*/) {
    CheckMCUInportIR_Finish = 0;
}

void AllPreset_SendData() {
    datelen = 1;
    storeLength();
}

void IMPORTIR_SendData() {
    datelen = nothingAppended;
    if (isInportIR.load(std::memory_order_acquire) == 1) {
        const std::uint32_t current = step;
        append(current);
        append(IR_InportNumber);
        append(SendisInternalIR);
        appendUploadStep(current);
        if (current < lastUploadStep) {
            step = current + 1;
        } else if (current == lastUploadStep) {
            step = 0;
            if (armWithLastFrame == 1)
                CheckMCUInportIR_Finish = 1;
            isInportIR.store(0, std::memory_order_release);
        }
    }
    datelen = datelen == nothingAppended ? 0 : datelen - std::int32_t{frameCommandOffset};
    storeLength();
}

void RESET_SendData() {
    datelen = 0;
    if (iSReset == 1) {
        iSReset = 0;
        datelen = 1;
    }
    storeLength();
}

} // namespace cabslot
