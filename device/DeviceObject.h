// What the link's C-level functions reach of the one HIDClass through the global `object`: the
// observable event code and the devices it knows. HIDClass adds the thread.
#pragma once

#include "device/HIDManager.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace cabslot {

/// The two codes that `KVOValue` carries.
inline constexpr std::int64_t deviceDataReceived = 0; ///< names and flags were just refreshed
inline constexpr std::int64_t deviceLost = 1;         ///< unplugged, or a write found no device

class DeviceObject {
public:
    /// Runs on the thread that sets the value, the device thread: be brief, and do not add
    /// observers from inside. Gets no argument: KVOValue() has the value, or a newer one.
    using Observer = std::function<void()>;

    DeviceObject() = default;
    DeviceObject(const DeviceObject&) = delete;
    DeviceObject& operator=(const DeviceObject&) = delete;

    /// Any thread. 0 until the first event.
    std::int64_t KVOValue() const { return KVOValue_; }

    /// Stores the value and tells every observer, also when the value is the old one.
    void setKVOValue(std::int64_t value);

    /// Any thread. An observer is never removed: what it captures must outlive this object.
    void addObserver(Observer observer);

    /// The devices to choose among when several match; empty unless HIDClass::connectHID() ran.
    /// Device thread, or any while it is not running.
    const std::vector<HIDDeviceRef>& deviceRefs() const { return deviceRefs_; }
    void setDeviceRefs(std::vector<HIDDeviceRef> devices) { deviceRefs_ = std::move(devices); }

protected:
    ~DeviceObject() = default;

private:
    std::atomic<std::int64_t> KVOValue_{0};
    std::mutex observersMutex_;
    std::vector<Observer> observers_;
    std::vector<HIDDeviceRef> deviceRefs_;
};

/// Sets `KVOValue` on `object`; does nothing while there is no `object`. Device thread.
void raiseDeviceEvent(std::int64_t code);

} // namespace cabslot
