// The pedal as one connected host meets it: reports in, reports out.
//
// It does no input or output and reads no clock: whoever carries the reports passes in the time.
// One connection, one SimulatedPedal; the store behind it is shared and holds what outlives a
// connection.
#pragma once

#include "simulator/pedal/PedalFrames.h"
#include "simulator/pedal/PedalOptions.h"
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

/// Gets one line, without its line break, for each event. May be empty: nothing is logged.
using Log = std::function<void(const std::string&)>;

class SimulatedPedal {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// `store` must outlive the pedal.
    SimulatedPedal(PedalStore& store, const PedalOptions& options, Log log);

    /// Takes one report from the host. One that is not 64 bytes long or counts more than 63 bytes
    /// is logged and dropped.
    void receiveReport(std::span<const std::uint8_t> report, TimePoint now);

    /// The reports that are to be sent by now, in order; each is handed out once. Call it after
    /// every receiveReport() and when nextDue() has come.
    std::vector<Report> takeReports(TimePoint now);

    /// When takeReports() will next have something; nothing while only the host can change that.
    std::optional<TimePoint> nextDue() const;

private:
    /// The slot that is being received; it takes seven frames.
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
    const PedalOptions options_;
    const Log log_;
    FrameParser parser_;
    std::optional<Import> import_;
    // One a slot, so that a host that uploads without end leaves no heap of confirmations.
    std::array<std::optional<TimePoint>, slotCount> confirmationDue_;
    std::optional<TimePoint> announcementDue_;
    std::vector<Report> outgoing_;
};

/// The log line for a report that is not 64 bytes long.
std::string wrongLengthText(std::size_t length);

} // namespace cabslot::simulator
