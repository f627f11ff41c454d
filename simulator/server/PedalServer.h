// Carries reports between hosts and the simulated pedal: a poll loop over SOCK_SEQPACKET sockets,
// one 64-byte report per packet, either way, without a report ID.
//
// Each connection has its own SimulatedPedal; all share one store. Everything except stop() must be
// called on the thread of run(), or before run() is called.
#pragma once

#include "base/FileDescriptor.h"
#include "simulator/pedal/SimulatedPedal.h"
#include "simulator/server/ListeningSocket.h"

#include <cstddef>
#include <deque>
#include <list>
#include <poll.h>
#include <string>
#include <vector>

namespace cabslot::simulator {

class PedalServer {
public:
    using TimePoint = SimulatedPedal::TimePoint;

    /// `store` must outlive the server. `log` may be empty; it is called on run()'s thread.
    PedalServer(PedalStore& store, const PedalBehaviour& options, Log log);
    PedalServer(const PedalServer&) = delete;
    PedalServer& operator=(const PedalServer&) = delete;

    /// Lets hosts connect at `path`; the socket file is removed when run() ends or the server is
    /// destroyed. False, with the reason in `why`, on failure. See ListeningSocket for a path in
    /// use.
    bool listenAt(const std::string& path, std::string& why);

    /// Serves a host that is already connected, and takes ownership of the descriptor. If the host
    /// closes its end, it has left; if the server closes this one, the pedal is unplugged.
    void adopt(int connectedFd);

    /// Serves until stop(); a server that does not listen also ends with its last connection.
    /// Closes all connections at the end. Call it once.
    void run();

    /// Ends run(), even if it has not started yet. Any thread; safe in signal handlers.
    void stop();

private:
    struct Connection {
        unsigned number; // for the log
        FileDescriptor fd;
        SimulatedPedal pedal;
        std::deque<Report> outgoing{};
        std::size_t reportsReceived = 0;
        bool readsNothing = false; // its queue is full
        bool hostGone = false;     // its reports may still be waiting to be read
        bool closed = false;
    };

    bool serveOnce();
    std::vector<pollfd> waitList(TimePoint now) const;
    int pollTimeout(TimePoint now) const;
    void acceptHost(TimePoint now);
    void serve(Connection& connection, short events, TimePoint now);
    void receive(Connection& connection, TimePoint now);
    void vanishIfDue(Connection& connection);
    void enqueue(Connection& connection, const std::vector<Report>& reports);
    void sendQueued(Connection& connection);
    void add(FileDescriptor fd);
    void removeClosed();
    void say(const std::string& line) const;

    PedalStore& store_;
    const PedalBehaviour options_;
    const Log log_;
    FileDescriptor stopEvent_;
    ListeningSocket listener_;
    std::list<Connection> connections_;
    unsigned connectionsSeen_ = 0;
    bool vanished_ = false;
    TimePoint acceptFrom_ = TimePoint::min();
};

} // namespace cabslot::simulator
