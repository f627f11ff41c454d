#include "platform/SocketHIDManager.h"

#include "base/FileDescriptor.h"
#include "base/SystemError.h"
#include "platform/Deadline.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto sendTimeout = 1s; // a pedal that reads nothing this long has refused the report
constexpr auto lookInterval = 500ms;
constexpr const char* secondDeviceSuffix = ".2";

bool isFinal(int error) {
    return error != EAGAIN && error != EWOULDBLOCK && error != EINTR;
}

// Distinguishes a closed connection from an empty packet, which read() reports alike.
bool hasPeerClosed(int socket) {
    pollfd state = {.fd = socket, .events = POLLRDHUP, .revents = 0};
    return ::poll(&state, 1, 0) != 0;
}

std::string whyNotConnected(const std::string& path, int error) {
    if (error == EACCES || error == EPERM)
        return "you have no permission to use the pedal at " + path;
    return "no pedal answers at " + path + ": " + systemErrorText(error) +
           " (is a simulated pedal running there?)";
}

} // namespace

class SocketDevice final : public HIDDevice {
public:
    SocketDevice(std::string path, FileDescriptor socket, std::unique_ptr<PedalLock> lock)
        : path_(std::move(path)), lock_(std::move(lock)), socket_(std::move(socket)) {}

    bool SetReport(const HIDReport& report) override {
        const auto deadline = Clock::now() + sendTimeout;
        while (socket_) {
            const ssize_t sent =
                ::send(socket_.get(), report.data(), report.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent == static_cast<ssize_t>(report.size()))
                return true;
            if (isFinal(errno) || Clock::now() >= deadline)
                return false;
            pollfd writable = {.fd = socket_.get(), .events = POLLOUT, .revents = 0};
            ::poll(&writable, 1, millisecondsUntil(deadline));
        }
        return false;
    }

    void close() override {
        socket_.close();
        lock_.reset();
    }

    int socket() const { return socket_.get(); }
    const std::string& path() const { return path_; }

private:
    std::string path_;
    std::unique_ptr<PedalLock> lock_;
    FileDescriptor socket_;
};

SocketHIDManager::SocketHIDManager(const std::string& path, WhileInUse whileInUse)
    : paths_{path, path + secondDeviceSuffix}, whileInUse_(std::move(whileInUse)) {}

SocketHIDManager::SocketHIDManager(int connectedSocket) {
    connected_.push_back(
        std::make_shared<SocketDevice>("", FileDescriptor(connectedSocket), nullptr));
}

SocketHIDManager::~SocketHIDManager() = default;

bool SocketHIDManager::open(const HIDMatching& /*matching*/, const HIDCallbacks& callbacks) {
    callbacks_ = callbacks;
    lookForDevices();
    return true;
}

void SocketHIDManager::lookForDevices() {
    nextLook_ = Clock::now() + lookInterval;
    for (const std::string& path : paths_) {
        const bool known = std::any_of(devices_.begin(), devices_.end(),
                                       [&](const auto& device) { return device->path() == path; });
        if (!known && !connectTo(path))
            break;
    }
    whileInUse_ = nullptr;
}

// False: another program has the pedal, and the one beside it, too.
bool SocketHIDManager::connectTo(const std::string& path) {
    LockAttempt attempt = lockPedal(path);
    while (attempt.holder && whileInUse_ && whileInUse_(*attempt.holder))
        attempt = lockPedal(path);
    if (attempt.holder)
        whyNoDevice_.unusable(inUseText(path, *attempt.holder));
    else if (std::string why = connect(path, std::move(attempt.lock));
             !why.empty() && path == paths_.front())
        whyNoDevice_.absent(std::move(why));
    return !attempt.holder;
}

std::string SocketHIDManager::connect(const std::string& path, std::unique_ptr<PedalLock> lock) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        return "the socket path " + path + " is too long; " +
               std::to_string(sizeof address.sun_path - 1) + " bytes are possible";
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));

    FileDescriptor fd(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // The socket API takes every address family through this cast.
    if (!fd ||
        ::connect(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return whyNotConnected(path, errno);
    connected_.push_back(std::make_shared<SocketDevice>(path, std::move(fd), std::move(lock)));
    return {};
}

void SocketHIDManager::waitForEvents(TimePoint deadline) {
    if (Clock::now() >= nextLook_)
        lookForDevices();
    announceNewDevices();
    polled_.clear(); // keeps its capacity
    for (const auto& device : devices_)
        polled_.push_back({.fd = device->socket(), .events = POLLIN, .revents = 0});
    const timespec wait = timeUntil(deadline);
    if (::ppoll(polled_.data(), polled_.size(), &wait, nullptr) <= 0)
        return;
    // Backwards, since a lost device is removed from the list.
    for (std::size_t i = polled_.size(); i-- > 0;) {
        if (polled_[i].revents != 0)
            takeReports(std::shared_ptr(devices_[i]), deadline);
    }
}

void SocketHIDManager::announceNewDevices() {
    for (auto& device : std::exchange(connected_, {})) {
        whyNoDevice_.found();
        devices_.push_back(device);
        callbacks_.matching(callbacks_.context, 0, this, device);
    }
}

// Reads what has arrived. Stops at the deadline, so that a pedal that sends without a pause cannot
// keep the timers from running.
void SocketHIDManager::takeReports(const std::shared_ptr<SocketDevice>& device,
                                   TimePoint deadline) {
    std::array<std::uint8_t, 2 * hidReportSize> packet{}; // larger, to detect long reports
    do {
        const ssize_t size = ::recv(device->socket(), packet.data(), packet.size(), MSG_DONTWAIT);
        if (size < 0 && !isFinal(errno))
            return;
        if (size < 0 || (size == 0 && hasPeerClosed(device->socket())))
            return remove(device);
        callbacks_.report(callbacks_.context, 0, device, HIDReportType::input, 0, packet.data(),
                          static_cast<std::size_t>(size));
    } while (Clock::now() < deadline);
}

void SocketHIDManager::remove(const std::shared_ptr<SocketDevice>& device) {
    device->close();
    std::erase(devices_, device);
    whyNoDevice_.lost();
    callbacks_.removal(callbacks_.context, 0, this, device);
}

std::vector<HIDDeviceRef> SocketHIDManager::copyDevices() const {
    return {devices_.begin(), devices_.end()};
}

} // namespace cabslot
