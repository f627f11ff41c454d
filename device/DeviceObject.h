// The part of the one HIDClass that the C-level functions reach through the global `object`: the
// observable event code and the known devices. HIDClass adds the thread.
#pragma once

#include "device/HIDManager.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace cabslot {

/// The two event codes in `KVOValue`.
inline constexpr std::int64_t deviceDataReceived = 0; ///< names and flags were just refreshed
inline constexpr std::int64_t deviceLost = 1;         ///< unplugged, or a write found no device

class DeviceObject {
public:
    /// Runs on the device thread, which sets the value: return quickly, and add no observers from
    /// inside. Takes no argument: KVOValue() has the value, or a newer one.
    using Observer = std::function<void()>;

    DeviceObject() = default;
    DeviceObject(const DeviceObject&) = delete;
    DeviceObject& operator=(const DeviceObject&) = delete;

    /// Any thread. 0 until the first event.
    std::int64_t KVOValue() const { return KVOValue_; }

    /// Stores the value and calls every observer, even if the value is unchanged.
    void setKVOValue(std::int64_t value);

    /// Any thread. Observers are never removed: what they capture must outlive this object.
    void addObserver(Observer observer);

    /// The candidates if several devices match; empty unless HIDClass::connectHID() has run. Device
    /// thread, or any thread while it is not running.
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
