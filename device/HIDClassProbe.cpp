// The part of the device link that identifies the pedal among several matching devices. The
// programs use the first device that matches and do not need it.
#include "device/HIDClass.h"
#include "device/HIDReports.h"
#include "device/SharedState.h"

#include <cstdio>
#include <thread>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t probeOffset = 2;
constexpr std::int32_t probeSize = 8;
constexpr auto probePause = 60ms;
constexpr std::int32_t probesPerDevice = 20;
constexpr std::int32_t probesAfterBadReport = 40;
constexpr std::int32_t passesOverAllDevices = 3;

HIDDeviceRef deviceAt(const std::vector<HIDDeviceRef>& devices, std::int32_t index) {
    const auto i = static_cast<std::size_t>(index);
    return index >= 0 && i < devices.size() ? devices[i] : nullptr;
}

} // namespace

void HIDClass::connectHID() {
    onDeviceThread([this] {
        if (HIDManager() == nullptr)
            return;
        setDeviceRefs(HIDManager()->copyDevices());
        HID_Device = deviceAt(deviceRefs(), deveiceIndex);
    });
}

bool HIDClass::checkUSBDevice() {
    for (;;) {
        std::printf("%ld %d %d\n", long{isDeviceConnent}, deveiceIndex.load(), checkNumber.load());
        if (isDeviceConnent == 0) {
            std::this_thread::yield();
            continue;
        }
        if (checkNumber == passesOverAllDevices) {
            isDeviceConnent = 0;
            std::fprintf(stderr, "没有符合要求的USB接口\n"); // no suitable USB interface was found
            return false;
        }
        if (deviceDidTrue == 1)
            return true;
        onDeviceThread([] { WriteHid(deviceInfoBuff.data() + probeOffset, probeSize); });
        pause_(probePause);
        onDeviceThread([this] { countProbe(); });
    }
}

// A bad report sets the count to 40 before it is incremented here. It then passes both limits, and
// the scan stays with that device: it has answered, though badly.
void HIDClass::countProbe() {
    ++timer;
    if (timer == probesAfterBadReport || timer == probesPerDevice) {
        timer = 0;
        moveToNextDevice();
    }
}

void HIDClass::moveToNextDevice() {
    ++deveiceIndex;
    if (deveiceIndex >= static_cast<std::int32_t>(deviceRefs().size())) {
        deveiceIndex = 0;
        ++checkNumber;
    }
    HID_Device = deviceAt(deviceRefs(), deveiceIndex);
}

// Runs `work` between two ticks of the device thread and waits until it is done. Runs it directly
// if the caller is that thread or the thread is not running.
void HIDClass::onDeviceThread(const std::function<void()>& work) {
    std::unique_lock lock(workMutex_);
    if (deviceThread_ == std::thread::id() || deviceThread_ == std::this_thread::get_id())
        return work();
    const std::future<void> done = work_.emplace_back(work).get_future();
    lock.unlock();
    done.wait();
}

void HIDClass::runHandedWork() {
    std::vector<std::packaged_task<void()>> work;
    {
        const std::lock_guard lock(workMutex_);
        work.swap(work_);
    }
    for (auto& task : work)
        task();
}

// The device thread still runs work queued before it ends; later work runs on the caller's thread.
void HIDClass::endHandedWork() {
    const std::lock_guard lock(workMutex_);
    deviceThread_ = {};
    runHandedWork();
}

void HIDClass::sleepFor(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

} // namespace cabslot
