// The device link: the thread that finds the pedal, receives from it and sends to it.
//
// On the device thread run the HID service's callbacks and two 10 ms timers, one unpacking what was
// received and one sending what is due. The rest of the program talks to the link through the
// values in SharedState.h and through KVOValue.
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

/// One at a time: it is the process's `object`. Destroying it stops the device thread.
class HIDClass final : public DeviceObject {
public:
    using Pause = std::function<void(std::chrono::milliseconds)>;

    /// Prepares the shared values; touches no bus. `manager` must outlive the link. `pause` is how
    /// checkUSBDevice() waits between probes.
    explicit HIDClass(cabslot::HIDManager& manager, Pause pause = sleepFor);
    ~HIDClass();

    /// Starts the device thread and returns. Once per object.
    void OpenDevice();

    /// Takes the devices the service knows and makes the one at `deveiceIndex` current, or none.
    /// Does nothing before the device thread has a manager. Any thread.
    void connectHID();

    /// Probes one known device after another, 20 times each, until one has passed the identity
    /// handshake (true) or all were asked three times (false). Waits busily while there is no
    /// device. Prints a line each round. Not on the device thread.
    bool checkUSBDevice();

    void HID_SendData(); ///< the send timer's tick
    void HID_ReadData(); ///< the read timer's tick

    /// The service in use; null until the device thread has started.
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
    std::recursive_mutex workMutex_; ///< work may raise an event whose observer hands in more
    std::thread::id deviceThread_;   ///< the running device thread, or none
    std::vector<std::packaged_task<void()>> work_; ///< handed to it, not yet run
};

} // namespace cabslot
