#include "device/SendScheduler.h"

#include "device/DataUnpacking.h"
#include "device/DeviceCommands.h"
#include "device/SharedState.h"

namespace cabslot {

namespace {

constexpr std::int32_t requestStep = commandRequestAllData;
constexpr std::int32_t importStep = commandImportIR;
constexpr std::int32_t idleStep = commandIdle;

void buildFrame() {
    switch (SendStep) {
    case schedulerStart:
        // Any value but 0 sends; the length field is still 0, so AA 55 00 00 FF FF is sent, once.
        datelen = 16;
        SendStep = requestStep;
        break;
    case requestStep:
        DataBuff[frameCommandOffset] = commandRequestAllData;
        AllPreset_SendData();
        SendStep = importStep;
        break;
    case importStep:
        DataBuff[frameCommandOffset] = commandImportIR;
        IMPORTIR_SendData();
        SendStep = idleStep;
        break;
    case idleStep:
        DataBuff[frameCommandOffset] = commandIdle;
        SendStep = importStep;
        break;
    default:
        break;
    }
}

} // namespace

void runSendScheduler() {
    DataBuff[0] = frameSync1;
    DataBuff[1] = frameSync2;
    if (IsRecDataEnd == 0) {
        IsRecDataEnd = 1;
        buildFrame();
        IsRecDataEnd = 0;
    }
    if (datelen != 0) {
        SendUartCmd(DataBuff.data());
        datelen = 0;
    }
}

} // namespace cabslot
