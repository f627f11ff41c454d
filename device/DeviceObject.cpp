#include "device/DeviceObject.h"

#include "device/SharedState.h"

#include <utility>

namespace cabslot {

void DeviceObject::setKVOValue(std::int64_t value) {
    KVOValue_ = value;
    const std::lock_guard lock(observersMutex_);
    for (const Observer& observer : observers_)
        observer();
}

void DeviceObject::addObserver(Observer observer) {
    const std::lock_guard lock(observersMutex_);
    observers_.push_back(std::move(observer));
}

void raiseDeviceEvent(std::int64_t code) {
    if (object != nullptr)
        object->setKVOValue(code);
}

} // namespace cabslot
