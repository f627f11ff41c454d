#include "device/SharedState.h"

namespace cabslot {

namespace {

constexpr std::int32_t schedulerStart = 1000;

} // namespace

std::array<std::uint8_t, rxBufferSize> rx_buffer{};
std::uint32_t rx_buffer_count = 0;
std::uint32_t rx_buffer_writep = 0;
std::uint32_t rx_buffer_readp = 0;
std::array<std::uint8_t, maxFrameSize> FrameBuffer{};
const FrameView pFrameStruct(FrameBuffer.data());
std::uint16_t vaildDataCount = 0;
std::uint8_t Step = 0;

std::array<std::uint8_t, 10240> DataBuff{};
std::int32_t datelen = 0;
std::int32_t SendStep = schedulerStart;
std::uint8_t IsRecDataEnd = 0;
std::uint8_t iSReset = 0;
std::atomic<std::uint32_t> step{0};

std::atomic<std::uint8_t> isInportIR{0};
std::atomic<std::uint32_t> CheckMCUInportIR_Finish{0};
std::atomic<std::uint32_t> IR_InportNumber{0};
std::array<std::uint32_t, 1024> irdatabuff{};
std::array<std::uint8_t, 20> SendFileName{};
std::uint8_t SendisInternalIR = 0;
std::uint8_t armWithLastFrame = 0;

SlotTexts IRNameArr;
std::array<std::atomic<std::uint8_t>, slotCount> isInternalIRArray{1, 1, 1, 1};
SlotTexts isInternalIRArray2;

DeviceObject* object = nullptr;
HIDDeviceRef HID_Device;
std::atomic<std::uint8_t> isDeviceConnent{0};
std::int32_t HIDDeviceID_int = 0;
std::atomic<std::int32_t> deviceDidTrue{0};
std::uint8_t deviceTrue = 1;
std::uint8_t isVersionTrue = 0;
char deviceModel = 0;
std::atomic<std::int32_t> deveiceIndex{0};
std::atomic<std::int32_t> timer{0};
std::atomic<std::int32_t> checkNumber{0};
std::array<std::uint8_t, 80> deviceInfoBuff{};

void resetSharedState() {
    rx_buffer.fill(0);
    rx_buffer_count = rx_buffer_writep = rx_buffer_readp = 0;
    FrameBuffer.fill(0);
    vaildDataCount = 0;
    Step = 0;

    DataBuff.fill(0);
    datelen = 0;
    SendStep = schedulerStart;
    IsRecDataEnd = 0;
    iSReset = 0;
    step = 0;

    isInportIR = 0;
    CheckMCUInportIR_Finish = 0;
    IR_InportNumber = 0;
    irdatabuff.fill(0);
    SendFileName.fill(0);
    SendisInternalIR = 0;
    armWithLastFrame = 0;

    IRNameArr.clear();
    for (auto& flag : isInternalIRArray)
        flag = 1;
    isInternalIRArray2.clear();

    object = nullptr;
    HID_Device = nullptr;
    isDeviceConnent = 0;
    HIDDeviceID_int = 0;
    deviceDidTrue = 0;
    deviceTrue = 1;
    isVersionTrue = 0;
    deviceModel = 0;
    deveiceIndex = timer = checkNumber = 0;
    deviceInfoBuff.fill(0);
}

} // namespace cabslot
