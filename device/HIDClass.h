// The device link: the thread that finds the pedal, receives from it and sends to it.
//
// The device thread runs the HID service's callbacks and two 10 ms timers: one unpacks what was
// received, one sends what is due. The rest of the program uses the link through the values in
// SharedState.h and through KVOValue.
#pragma once

#include "device/DeviceObject.h"
#include "device/HIDManager.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace cabslot {

/// Only one may exist: it becomes the process's `object`. Its destructor stops the device thread.
class HIDClass final : public DeviceObject {
public:
    using Pause = std::function<void(std::chrono::milliseconds)>;

    /// Initializes the shared values; accesses no bus. `manager` must outlive the link.
    /// checkUSBDevice() calls `pause` to wait between probes.
    explicit HIDClass(cabslot::HIDManager& manager, Pause pause = sleepFor);
    ~HIDClass();

    /// Starts the device thread and returns. Call it once per object.
    void OpenDevice();

    /// Copies the service's device list and makes the device at `deveiceIndex` current, or none.
    /// Does nothing before the device thread has a manager. Any thread.
    void connectHID();

    /// Probes the known devices one after another, 20 times each, until one passes the identity
    /// handshake (true) or all were probed three times (false). Busy-waits while there is no
    /// device. Prints a line each round. Not on the device thread.
    bool checkUSBDevice();

    void HID_SendData(); ///< the send timer's tick
    void HID_ReadData(); ///< the read timer's tick

    /// The service in use; null until the device thread has started. The property's given name
    /// hides its type's, which is therefore written with its namespace here.
    cabslot::HIDManager* HIDManager() const { return HIDManager_; }
    void setHIDManager(cabslot::HIDManager* manager) { HIDManager_ = manager; }

private:
    static void sleepFor(std::chrono::milliseconds time);

    void myThreadMainMethod();
    void runLoop();
    void onDeviceThread(const std::function<void()>& work);
    void runHandedWork();
    void endHandedWork();
    void moveToNextDevice();
    void countProbe();

    cabslot::HIDManager& manager_;
    std::atomic<cabslot::HIDManager*> HIDManager_{nullptr};
    Pause pause_;

    std::thread thread_;
    std::atomic<bool> stop_{false};
    std::recursive_mutex workMutex_; ///< work may raise an event whose observer queues more
    std::thread::id deviceThread_;   ///< the running device thread, or none
    std::vector<std::packaged_task<void()>> work_; ///< queued for the device thread
};

} // namespace cabslot
