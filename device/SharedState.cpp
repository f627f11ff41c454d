#include "device/SharedState.h"

#include <memory>
#include <utility>

namespace cabslot {

namespace {

// Start values that are not 0, with schedulerStart.
constexpr std::uint8_t factoryIR = 1;
constexpr std::uint8_t matched = 1;

template<std::size_t... slot>
consteval auto allFactory(std::index_sequence<slot...> /*slots*/) {
    return std::array<std::atomic<std::uint8_t>, slotCount>{
        (static_cast<void>(slot), factoryIR)...};
}

template<typename... Values>
void restart(Values&... values) {
    ((std::destroy_at(&values), std::construct_at(&values)), ...);
}

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
constinit std::array<std::atomic<std::uint8_t>, slotCount> isInternalIRArray =
    allFactory(std::make_index_sequence<slotCount>{});
SlotTexts isInternalIRArray2;

DeviceObject* object = nullptr;
HIDDeviceRef HID_Device;
std::atomic<std::uint8_t> isDeviceConnent{0};
std::int32_t HIDDeviceID_int = 0;
std::atomic<std::int32_t> deviceDidTrue{0};
std::uint8_t deviceTrue = matched;
std::uint8_t isVersionTrue = 0;
char deviceModel = 0;
std::atomic<std::int32_t> deveiceIndex{0};
std::atomic<std::int32_t> timer{0};
std::atomic<std::int32_t> checkNumber{0};
std::array<std::uint8_t, 80> deviceInfoBuff{};

void resetSharedState() {
    restart(rx_buffer, rx_buffer_count, rx_buffer_writep, rx_buffer_readp);
    restart(FrameBuffer, vaildDataCount, Step);
    restart(DataBuff, datelen, IsRecDataEnd, iSReset, step);
    restart(isInportIR, CheckMCUInportIR_Finish, IR_InportNumber);
    restart(irdatabuff, SendFileName, SendisInternalIR, armWithLastFrame);
    restart(object, HID_Device, isDeviceConnent, HIDDeviceID_int, deviceDidTrue, isVersionTrue);
    restart(deviceModel, deveiceIndex, timer, checkNumber, deviceInfoBuff);
    IRNameArr.clear();
    isInternalIRArray2.clear();
    SendStep = schedulerStart;
    for (auto& flag : isInternalIRArray)
        flag = factoryIR;
    deviceTrue = matched;
}

} // namespace cabslot
