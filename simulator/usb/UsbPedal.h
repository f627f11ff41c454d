// Puts the simulated pedal on a virtual USB port of Linux (vhci-hcd), where it looks like any HID
// device: a bridge between the port's messages and a PedalServer's socket.
//
//   kernel <- USB/IP messages over a stream socket -> UsbPedal <- reports, one a packet -> server
//
// Use it from one thread only.
#pragma once

#include "base/FileDescriptor.h"
#include "simulator/pedal/PedalBehaviour.h"
#include "simulator/usb/UsbIp.h"

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <vector>

namespace cabslot::simulator {

/// Plugs a device into the first free virtual port and returns its end of the connection; closing
/// it unplugs the device. Empty, with the reason in `why`, without the module vhci-hcd, root's
/// rights or a free port.
FileDescriptor plugIntoVirtualPort(std::string& why);

class UsbPedal {
public:
    /// `bus`: the stream socket to the kernel. `reports`: the SOCK_SEQPACKET one to the pedal. Only
    /// the faults of USB are used.
    UsbPedal(FileDescriptor bus, FileDescriptor reports, const Faults& faults);

    /// Runs until the pedal or the bus closes its socket, or until `stop` (the caller's descriptor)
    /// becomes readable. Then closes both: the pedal is unplugged.
    void run(int stop);

private:
    bool serveOnce(int stop);
    bool takeRequest();
    bool submit(const UsbIpRequest& request);
    bool submitControl(const UsbIpRequest& request);
    bool submitReport(const UsbIpRequest& request, std::span<const std::uint8_t> report);
    bool unlink(const UsbIpRequest& request);
    bool giveReport();
    bool answer(std::span<const std::uint8_t> message);

    FileDescriptor bus_;
    FileDescriptor reports_;
    const Faults faults_;
    std::deque<UsbIpRequest> readers_; // the host's pending requests for a report, oldest first
    std::vector<UsbIpRequest> held_;   // reports that are never taken, until the host gives up
};

} // namespace cabslot::simulator
