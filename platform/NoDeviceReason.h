// Why a HID service has no device, in words for the user. Device thread, except text().
#pragma once

#include <mutex>
#include <string>
#include <utility>

namespace cabslot {

class NoDeviceReason {
public:
    /// A device was announced.
    void found() { set({}, true); }

    /// An announced device is gone, even if others are left: it may have been the current one.
    void lost() { set(unplugged, true); }

    /// There is a device, but it cannot be used.
    void unusable(std::string why) { set(std::move(why)); }

    /// There is no device, for the reason `why`, unless there was one before: then it was
    /// unplugged.
    void absent(std::string why) { set(hadDevice_ ? unplugged : std::move(why)); }

    /// Empty if nothing is known. Any thread.
    std::string text() const {
        const std::lock_guard lock(mutex_);
        return text_;
    }

private:
    static constexpr const char* unplugged = "the pedal was unplugged";

    void set(std::string text, bool hadDevice = false) {
        hadDevice_ = hadDevice_ || hadDevice;
        const std::lock_guard lock(mutex_);
        text_ = std::move(text);
    }

    bool hadDevice_ = false;
    mutable std::mutex mutex_;
    std::string text_;
};

} // namespace cabslot
