#include "simulator/usb/UsbPedal.h"

#include "base/SystemError.h"
#include "simulator/pedal/PedalReplies.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

namespace cabslot::simulator {

namespace {

constexpr const char* attachFile = "/sys/devices/platform/vhci_hcd.0/attach";
constexpr int ports = 8;     // of the virtual hub for USB 2 devices
constexpr int deviceId = 1;  // any number but 0
constexpr int fullSpeed = 2; // the kernel's number for it
// More than any request to this device needs; a longer one means that the message stream is out of
// sync.
constexpr std::uint32_t maxData = 65536;

/// Attaches the socket to the port. Returns 0 or an error number.
int attach(int file, int port, int socket) {
    const std::string line = std::to_string(port) + " " + std::to_string(socket) + " " +
                             std::to_string(deviceId) + " " + std::to_string(fullSpeed);
    return ::write(file, line.data(), line.size()) < 0 ? errno : 0;
}

/// Receives all of `bytes`; false if the connection ends.
bool receiveAll(int fd, std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t got = ::recv(fd, bytes.data(), bytes.size(), MSG_WAITALL);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(got));
    }
    return true;
}

} // namespace

FileDescriptor plugIntoVirtualPort(std::string& why) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        why = "no socket pair: " + systemErrorText(errno);
        return {};
    }
    FileDescriptor ours(ends[0]);
    const FileDescriptor kernels(ends[1]); // the kernel keeps its own reference
    const FileDescriptor file(::open(attachFile, O_WRONLY | O_CLOEXEC));
    if (!file) {
        why = std::string(attachFile) + ": " + systemErrorText(errno) +
              "; it takes root and the module vhci-hcd";
        return {};
    }
    int error = EBUSY;
    for (int port = 0; port < ports && error == EBUSY; ++port)
        error = attach(file.get(), port, kernels.get());
    if (error != 0) {
        why = std::string(attachFile) + ": " + systemErrorText(error);
        return {};
    }
    return ours;
}

UsbPedal::UsbPedal(FileDescriptor bus, FileDescriptor reports, const Faults& faults)
    : bus_(std::move(bus)), reports_(std::move(reports)), faults_(faults) {}

void UsbPedal::run(int stop) {
    while (serveOnce(stop)) {
    }
    bus_.close();
    reports_.close();
}

/// Waits for events and handles them. False: time to end.
bool UsbPedal::serveOnce(int stop) {
    // Reports stay in their socket until the host asks for one; a closed socket is noticed anyway.
    const short pedalEvents = readers_.empty() ? 0 : POLLIN;
    std::array<pollfd, 3> waiting{
        {{stop, POLLIN, 0}, {bus_.get(), POLLIN, 0}, {reports_.get(), pedalEvents, 0}}};
    if (::poll(waiting.data(), waiting.size(), -1) < 0)
        return errno == EINTR;
    if (waiting[0].revents != 0 || (waiting[2].revents & (POLLHUP | POLLERR)) != 0)
        return false;
    if (waiting[2].revents != 0 && !giveReport())
        return false;
    return waiting[1].revents == 0 || takeRequest();
}

bool UsbPedal::takeRequest() {
    UsbIpHeader header{};
    if (!receiveAll(bus_.get(), header))
        return false;
    const UsbIpRequest request = decodeRequest(header);
    switch (request.command) {
    case UsbIpCommand::submit:
        return submit(request);
    case UsbIpCommand::unlink:
        return unlink(request);
    }
    return false;
}

bool UsbPedal::submit(const UsbIpRequest& request) {
    if (request.length > maxData)
        return false;
    std::vector<std::uint8_t> data(request.in ? 0 : request.length);
    if (!receiveAll(bus_.get(), data))
        return false;
    if (request.endpoint == 0)
        return submitControl(request);
    if (request.endpoint != reportEndpoint)
        return answer(encodeSubmitAnswer(request.sequence, statusStalled, 0, {}));
    if (!request.in)
        return submitReport(request, data);
    readers_.push_back(request);
    return true;
}

bool UsbPedal::submitControl(const UsbIpRequest& request) {
    const auto data = answerControl(request.setup);
    if (!data)
        return answer(encodeSubmitAnswer(request.sequence, statusStalled, 0, {}));
    if (!request.in)
        return answer(encodeSubmitAnswer(request.sequence, 0, request.length, {}));
    const std::size_t moved = std::min<std::size_t>(data->size(), request.length);
    return answer(encodeSubmitAnswer(request.sequence, 0, moved, std::span(*data).first(moved)));
}

bool UsbPedal::submitReport(const UsbIpRequest& request, std::span<const std::uint8_t> report) {
    if (faults_.usbStall)
        return answer(encodeSubmitAnswer(request.sequence, statusStalled, 0, {}));
    if (faults_.usbHold) {
        held_.push_back(request);
        return true;
    }
    if (::send(reports_.get(), report.data(), report.size(), MSG_NOSIGNAL) < 0)
        return false;
    return answer(encodeSubmitAnswer(request.sequence, 0, report.size(), {}));
}

bool UsbPedal::unlink(const UsbIpRequest& request) {
    const auto isMeant = [&](const UsbIpRequest& open) {
        return open.sequence == request.unlinked;
    };
    const bool found = std::erase_if(readers_, isMeant) + std::erase_if(held_, isMeant) != 0;
    return answer(encodeUnlinkAnswer(request.sequence, found ? statusUnlinked : 0));
}

/// Passes one report from the pedal to the host, which has asked for it.
bool UsbPedal::giveReport() {
    Report report{};
    const ssize_t got = ::recv(reports_.get(), report.data(), report.size(), MSG_DONTWAIT);
    if (got < 0)
        return errno == EAGAIN || errno == EINTR;
    if (got == 0)
        return false;
    const UsbIpRequest reader = readers_.front();
    readers_.pop_front();
    const auto moved = std::min<std::size_t>(static_cast<std::size_t>(got), reader.length);
    return answer(encodeSubmitAnswer(reader.sequence, 0, moved, std::span(report).first(moved)));
}

bool UsbPedal::answer(std::span<const std::uint8_t> message) {
    while (!message.empty()) {
        const ssize_t sent = ::send(bus_.get(), message.data(), message.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return false;
        message = message.subspan(sent < 0 ? 0 : static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace cabslot::simulator
