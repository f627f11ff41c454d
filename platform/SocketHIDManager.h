// The HID service over Unix SOCK_SEQPACKET sockets: one packet is one 64-byte report, either way,
// without a report ID. Connecting is plugging in; the peer's closing is unplugging.
#pragma once

#include "device/HIDManager.h"

#include <poll.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace cabslot {

class SocketDevice;

class SocketHIDManager final : public HIDManager {
public:
    /// Connects to the socket at `path` when it is opened, and to `path`.2 if that exists: a second
    /// device beside the first. Nothing connects again later.
    explicit SocketHIDManager(std::string path);

    /// Uses a socket that is connected already; owns it from now on.
    explicit SocketHIDManager(int connectedSocket);

    ~SocketHIDManager() override;

    /// A socket's device matches whatever is asked for. Always true.
    bool open(const HIDMatching& matching, const HIDCallbacks& callbacks) override;
    void waitForEvents(TimePoint deadline) override;
    std::vector<HIDDeviceRef> copyDevices() const override;
    std::string whyNoDevice() const override;

private:
    void connectTo(const std::string& path);
    void announceNewDevices();
    void takeReports(const std::shared_ptr<SocketDevice>& device, TimePoint deadline);
    void remove(const std::shared_ptr<SocketDevice>& device);
    void setWhyNoDevice(std::string why);

    std::string path_;
    HIDCallbacks callbacks_;
    std::vector<std::shared_ptr<SocketDevice>> connected_; ///< not announced yet
    std::vector<std::shared_ptr<SocketDevice>> devices_;   ///< announced
    std::vector<pollfd> polled_;                           ///< one for each of devices_

    mutable std::mutex whyMutex_;
    std::string whyNoDevice_;
};

} // namespace cabslot
