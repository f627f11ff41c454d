// The HID service over Unix SOCK_SEQPACKET sockets: one packet is one 64-byte report, either way,
// without a report ID. A connection is a plugged-in pedal; the peer's closing it unplugs the pedal.
#pragma once

#include "device/HIDManager.h"
#include "platform/NoDeviceReason.h"
#include "platform/PedalLock.h"

#include <poll.h>

#include <memory>
#include <string>
#include <vector>

namespace cabslot {

class SocketDevice;

class SocketHIDManager final : public HIDManager {
public:
    /// Connects to the socket at `path`, and to `path`.2 for a second device, as soon as they
    /// answer: tries on open() and twice a second from then on.
    explicit SocketHIDManager(const std::string& path, WhileInUse whileInUse = {});

    /// Uses a socket that is already connected and takes ownership of it.
    explicit SocketHIDManager(int connectedSocket);

    ~SocketHIDManager() override;

    /// A socket's device matches any request. Always true.
    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override { return whyNoDevice_.text(); }

private:
    void lookForDevices();
    bool connectTo(const std::string& path);
    std::string connect(const std::string& path, std::unique_ptr<PedalLock> lock);
    void announceNewDevices();
    void takeReports(const std::shared_ptr<SocketDevice>& device, TimePoint deadline);
    void remove(const std::shared_ptr<SocketDevice>& device);

    std::vector<std::string> paths_;
    HIDCallbacks callbacks_;
    TimePoint nextLook_{};                                 ///< when to try to connect again
    std::vector<std::shared_ptr<SocketDevice>> connected_; ///< not announced yet
    std::vector<std::shared_ptr<SocketDevice>> devices_;   ///< announced
    std::vector<pollfd> polled_;                           ///< one for each of devices_

    WhileInUse whileInUse_; ///< until the first look is over
    NoDeviceReason whyNoDevice_;
};

} // namespace cabslot
