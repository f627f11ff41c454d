// The pedal as seen by one connected host: reports in, reports out.
//
// It does no input or output and reads no clock: the caller passes in the time. There is one
// SimulatedPedal per connection; they share the store, which holds what must survive a
// connection.
#pragma once

#include "simulator/pedal/PedalBehaviour.h"
#include "simulator/pedal/PedalFrames.h"
#include "simulator/pedal/PedalReplies.h"
#include "simulator/pedal/PedalStore.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cabslot::simulator {

/// Receives one line, without its line break, for each event. If empty, nothing is logged.
using Log = std::function<void(const std::string&)>;

class SimulatedPedal {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// `store` must outlive the pedal. `failed` receives, beside the log, why something could not
    /// be stored.
    SimulatedPedal(PedalStore& store, const PedalBehaviour& options, Log log, Log failed = {});

    /// Processes one report from the host. Logs and drops one that is not 64 bytes long or counts
    /// more than 63 bytes.
    void receiveReport(std::span<const std::uint8_t> report, TimePoint now);

    /// Returns the reports that are due, in order, each only once. Call it after every
    /// receiveReport() and at nextDue().
    std::vector<Report> takeReports(TimePoint now);

    /// When takeReports() will next have a report; no value if that depends only on the host.
    std::optional<TimePoint> nextDue() const;

private:
    /// The slot that is being received, in seven frames.
    struct Import {
        std::uint8_t slotNumber; // 1 to 4
        std::uint8_t flag;
        std::size_t nextStep;
        PedalSlot content;
    };

    void handle(const Frame& frame, TimePoint now);
    void handleImport(std::span<const std::uint8_t> payload, TimePoint now);
    std::string whyNoImport(std::span<const std::uint8_t> payload) const;
    void finishImport(TimePoint now);
    void send(const std::vector<Report>& reports);
    void say(const std::string& line) const;

    PedalStore& store_;
    const PedalBehaviour options_;
    const Log log_;
    const Log failed_;
    FrameParser parser_;
    std::optional<Import> import_;
    // One per slot, so that a host that uploads endlessly does not pile up confirmations.
    std::array<std::optional<TimePoint>, slotCount> confirmationDue_;
    std::optional<TimePoint> announcementDue_;
    std::vector<Report> outgoing_;
};

/// The log line for a report that is not 64 bytes long.
std::string wrongLengthText(std::size_t length);

} // namespace cabslot::simulator
