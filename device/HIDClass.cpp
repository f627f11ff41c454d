#include "device/HIDClass.h"

#include "device/DataUnpacking.h"
#include "device/HIDCallbacks.h"
#include "device/RepeatingTimer.h"
#include "device/SendScheduler.h"
#include "device/SharedState.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

using Clock = std::chrono::steady_clock;

} // namespace

HIDClass::HIDClass(cabslot::HIDManager& manager, Pause pause)
    : manager_(manager), pause_(std::move(pause)) {
    object = this;
    const std::uint8_t factory = '1';
    isInternalIRArray2.clear();
    for (std::size_t i = 0; i < slotCount; ++i)
        isInternalIRArray2.setCharacters(i, {&factory, 1});
    IRNameArr.clear();
}

HIDClass::~HIDClass() {
    stop_ = true;
    if (thread_.joinable())
        thread_.join();
    if (object == this)
        object = nullptr;
}

void HIDClass::OpenDevice() {
    const std::lock_guard lock(workMutex_);
    thread_ = std::thread([this] { myThreadMainMethod(); });
    deviceThread_ = thread_.get_id();
}

void HIDClass::HID_SendData() {
    runSendScheduler();
}

void HIDClass::HID_ReadData() {
    DUP_Unpack();
}

void HIDClass::myThreadMainMethod() {
    setHIDManager(&manager_);
    const HIDCallbacks callbacks = {.context = nullptr,
                                    .matching = Handle_DeviceMatchingCallback,
                                    .removal = Handle_DeviceRemovalCallback,
                                    .report = deviceReportCallback};
    if (!manager_.open(pedalMatching, callbacks))
        // The text stays as it is, so that logs of all versions can be searched for it.
        std::fprintf(stderr, "IOHIDManagerOpen failed.\n");
    runLoop();
    endHandedWork();
}

void HIDClass::runLoop() {
    // One grid for both timers, so that the thread wakes once per tick.
    const Clock::time_point start = Clock::now();
    RepeatingTimer readTimer(start, tickPeriod);
    RepeatingTimer sendTimer(start, tickPeriod);
    while (!stop_) {
        manager_.waitForEvents(std::min(readTimer.due(), sendTimer.due()));
        runHandedWork();
        const Clock::time_point now = Clock::now(); // one time, or the second could fire alone
        if (readTimer.fire(now))
            HID_ReadData();
        if (sendTimer.fire(now))
            HID_SendData();
    }
}

} // namespace cabslot
