#include "device/HIDClass.h"

#include "device/DataUnpacking.h"
#include "device/HIDCallbacks.h"
#include "device/SendScheduler.h"
#include "device/SharedState.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto tick = 10ms;

// Fires when due; ticks that were missed are left out, not made up for.
class RepeatingTimer {
public:
    explicit RepeatingTimer(Clock::time_point now) : due_(now + tick) {}

    Clock::time_point due() const { return due_; }

    bool fire(Clock::time_point now) {
        if (now < due_)
            return false;
        while (due_ <= now)
            due_ += tick;
        return true;
    }

private:
    Clock::time_point due_;
};

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
    thread_ = std::thread([this] { myThreadMainMethod(); });
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
        std::fprintf(stderr, "IOHIDManagerOpen failed.\n");
    runLoop();
}

void HIDClass::runLoop() {
    RepeatingTimer readTimer(Clock::now());
    RepeatingTimer sendTimer(Clock::now());
    while (!stop_) {
        manager_.waitForEvents(std::min(readTimer.due(), sendTimer.due()));
        runHandedWork();
        if (readTimer.fire(Clock::now()))
            HID_ReadData();
        if (sendTimer.fire(Clock::now()))
            HID_SendData();
    }
}

} // namespace cabslot
