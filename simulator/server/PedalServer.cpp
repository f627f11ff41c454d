#include "simulator/server/PedalServer.h"

#include "base/SystemError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <utility>

namespace cabslot::simulator {

namespace {

using std::chrono::milliseconds;

// Replies that a host has not read yet; a real pedal would buffer fewer.
constexpr std::size_t maxQueuedReports = 256;
constexpr std::size_t maxConnections = 32;
// The pause after the system refused a connection (for example, no descriptors left).
constexpr milliseconds acceptPause{500};

constexpr short toRead = POLLIN;
constexpr short toReadAndWrite = POLLIN | POLLOUT;

// The order of the polled descriptors.
constexpr std::size_t stopIndex = 0;
constexpr std::size_t listenerIndex = 1;
constexpr std::size_t firstConnectionIndex = 2;

/// Distinguishes a closed connection from an empty packet: recv() returns 0 for both.
bool otherEndClosed(int fd) {
    pollfd state{fd, POLLRDHUP, 0};
    return ::poll(&state, 1, 0) != 0;
}

/// False, with the reason in errno, if not sent.
bool sendPacket(int fd, std::span<const std::uint8_t> packet) {
    ssize_t sent = -1;
    do
        sent = ::send(fd, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    while (sent < 0 && errno == EINTR);
    return sent >= 0;
}

bool sendInWrongLengths(int fd, const Report& report) {
    std::array<std::uint8_t, reportSize + 1> longer{};
    std::copy(report.begin(), report.end(), longer.begin());
    return sendPacket(fd, std::span(report).first(reportSize - 1)) && sendPacket(fd, longer);
}

} // namespace

PedalServer::PedalServer(PedalStore& store, const PedalBehaviour& options, Log log)
    : store_(store), options_(options), log_(std::move(log)),
      stopEvent_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

bool PedalServer::listenAt(const std::string& path, std::string& why) {
    return listener_.open(path, why);
}

void PedalServer::adopt(int connectedFd) {
    add(FileDescriptor(connectedFd));
}

void PedalServer::add(FileDescriptor fd) {
    const unsigned number = ++connectionsSeen_;
    connections_.push_back({number, std::move(fd), SimulatedPedal(store_, options_, log_)});
    say("host " + std::to_string(number) + " connected");
}

void PedalServer::stop() {
    const int savedErrno = errno;
    const std::uint64_t one = 1;
    // This fails only if the event is already set.
    [[maybe_unused]] const ssize_t written = ::write(stopEvent_.get(), &one, sizeof one);
    errno = savedErrno;
}

void PedalServer::run() {
    const bool listens = listener_.fd() >= 0;
    if (!stopEvent_)
        say("cannot serve: no event descriptor is available");
    while (stopEvent_ && (listens || !connections_.empty()) && serveOnce()) {
    }
    connections_.clear();
    listener_.close();
}

/// Waits for events and handles them. False: time to end.
bool PedalServer::serveOnce() {
    const TimePoint before = std::chrono::steady_clock::now();
    std::vector<pollfd> waiting = waitList(before);
    if (::poll(waiting.data(), waiting.size(), pollTimeout(before)) < 0 && errno != EINTR) {
        say("cannot serve: " + systemErrorText(errno));
        return false;
    }
    if (waiting[stopIndex].revents != 0)
        return false;
    const TimePoint now = std::chrono::steady_clock::now();
    std::size_t index = firstConnectionIndex;
    for (Connection& connection : connections_)
        serve(connection, waiting[index++].revents, now);
    removeClosed();
    if (waiting[listenerIndex].revents != 0)
        acceptHost(now);
    return true;
}

std::vector<pollfd> PedalServer::waitList(TimePoint now) const {
    const bool accepts = connections_.size() < maxConnections && now >= acceptFrom_;
    std::vector<pollfd> list{{stopEvent_.get(), toRead, 0},
                             {accepts ? listener_.fd() : -1, toRead, 0}};
    for (const Connection& connection : connections_) {
        list.push_back(
            {connection.fd.get(), connection.outgoing.empty() ? toRead : toReadAndWrite, 0});
    }
    return list;
}

/// Milliseconds until something is due, rounded up; -1 if nothing is.
int PedalServer::pollTimeout(TimePoint now) const {
    std::optional<TimePoint> next;
    if (now < acceptFrom_)
        next = acceptFrom_;
    for (const Connection& connection : connections_) {
        const std::optional<TimePoint> due = connection.pedal.nextDue();
        if (due && (!next || *due < *next))
            next = due;
    }
    if (!next)
        return -1;
    if (*next <= now)
        return 0;
    const auto wait = std::chrono::ceil<milliseconds>(*next - now).count();
    return static_cast<int>(std::min<milliseconds::rep>(wait, std::numeric_limits<int>::max()));
}

void PedalServer::acceptHost(TimePoint now) {
    FileDescriptor fd = listener_.accept();
    if (fd) {
        add(std::move(fd));
    } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
        say("cannot take a connection: " + systemErrorText(errno));
        acceptFrom_ = now + acceptPause;
    }
}

void PedalServer::serve(Connection& connection, short events, TimePoint now) {
    if ((events & ~POLLOUT) != 0)
        receive(connection, now);
    if (!connection.closed) {
        enqueue(connection, connection.pedal.takeReports(now));
        sendQueued(connection);
    }
}

/// Receives one packet per call, so that no host blocks the others.
void PedalServer::receive(Connection& connection, TimePoint now) {
    std::array<std::uint8_t, reportSize> bytes{};
    const ssize_t received = ::recv(connection.fd.get(), bytes.data(), bytes.size(),
                                    MSG_DONTWAIT | MSG_TRUNC); // TRUNC: the packet's true length
    if (received < 0) {
        // A host that left without reading everything causes one ECONNRESET, before the reports
        // that it sent.
        connection.closed = errno != EAGAIN && errno != EINTR && errno != ECONNRESET;
        return;
    }
    if (received == 0 && otherEndClosed(connection.fd.get())) {
        connection.closed = true;
        return;
    }
    ++connection.reportsReceived;
    const auto length = static_cast<std::size_t>(received);
    if (length > bytes.size())
        say(wrongLengthText(length));
    else
        connection.pedal.receiveReport(std::span(bytes).first(length), now);
    vanishIfDue(connection);
}

void PedalServer::vanishIfDue(Connection& connection) {
    const std::size_t limit = options_.faults.vanishAfter;
    if (limit == 0 || vanished_ || connection.reportsReceived < limit)
        return;
    vanished_ = true;
    connection.closed = true;
    say("vanishes after report " + std::to_string(limit));
}

/// Queues a reply completely or not at all: half a frame would corrupt the next one too.
void PedalServer::enqueue(Connection& connection, const std::vector<Report>& reports) {
    if (reports.empty() || connection.hostGone)
        return;
    const bool fits =
        connection.outgoing.size() + reports.size() <= maxQueuedReports || options_.faults.flood;
    if (fits)
        connection.outgoing.insert(connection.outgoing.end(), reports.begin(), reports.end());
    else if (!connection.readsNothing)
        say("host " + std::to_string(connection.number) + " does not read: replies are dropped");
    connection.readsNothing = !fits;
}

void PedalServer::sendQueued(Connection& connection) {
    while (!connection.outgoing.empty()) {
        const bool sent = options_.faults.wrongLength
                              ? sendInWrongLengths(connection.fd.get(), connection.outgoing.front())
                              : sendPacket(connection.fd.get(), connection.outgoing.front());
        if (!sent && errno == EAGAIN)
            return; // until the host has read more
        if (!sent) {
            connection.hostGone = true;
            connection.outgoing.clear();
            return;
        }
        connection.outgoing.pop_front();
    }
}

void PedalServer::removeClosed() {
    for (const Connection& connection : connections_)
        if (connection.closed)
            say("host " + std::to_string(connection.number) + " gone");
    connections_.remove_if([](const Connection& connection) { return connection.closed; });
}

void PedalServer::say(const std::string& line) const {
    if (log_)
        log_(line);
}

} // namespace cabslot::simulator
