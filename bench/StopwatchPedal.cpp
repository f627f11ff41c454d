#include "bench/StopwatchPedal.h"

#include "simulator/pedal/SimulatedPedal.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <array>
#include <utility>

namespace cabslot::bench {

namespace {

// Offsets in a report that begins an upload frame, see docs/protocol.md.
constexpr std::size_t syncOffset = 1;
constexpr std::size_t commandOffset = 5;
constexpr std::size_t stepOffset = 6;
constexpr std::uint8_t importCommand = 0xE9;

} // namespace

StopwatchPedal::StopwatchPedal(FileDescriptor socket) : socket_(std::move(socket)) {
    ::fcntl(socket_.get(), F_SETFL, 0); // blocking
    thread_ = std::thread([this] { serve(); });
}

StopwatchPedal::~StopwatchPedal() {
    ::shutdown(socket_.get(), SHUT_RDWR);
    thread_.join();
}

std::vector<UploadTimes> StopwatchPedal::takeUploads() {
    const std::lock_guard lock(mutex_);
    return std::exchange(uploads_, {});
}

void StopwatchPedal::serve() {
    simulator::SimulatedPedal pedal(store_, {.faults = {.confirmAtOnce = true}}, {});
    simulator::Report report{};
    while (::recv(socket_.get(), report.data(), report.size(), 0) ==
           static_cast<ssize_t>(report.size())) {
        const auto now = Clock::now();
        note(report.data(), now);
        pedal.receiveReport(report, now);
        const auto replies = pedal.takeReports(now);
        for (const simulator::Report& reply : replies)
            ::send(socket_.get(), reply.data(), reply.size(), MSG_NOSIGNAL);
        if (replies.empty() || upload_.frames.size() != uploadFrames)
            continue;
        upload_.confirmed = Clock::now();
        const std::lock_guard lock(mutex_);
        uploads_.push_back(std::exchange(upload_, {}));
    }
}

void StopwatchPedal::note(const std::uint8_t* report, Clock::time_point now) {
    upload_.lastReport = now;
    if (report[syncOffset] == 0xAA && report[syncOffset + 1] == 0x55 &&
        report[commandOffset] == importCommand && report[stepOffset] == upload_.frames.size())
        upload_.frames.push_back(now);
}

} // namespace cabslot::bench
