// The simulated pedal: its parser fed with the same bytes cut differently, then all of it fed with
// reports while time goes on.
//
// Input: faults (bits), pieces, then a script for the stream.
#include "fuzz/ImportRules.h"
#include "fuzz/StreamRules.h"
#include "fuzz/StreamScript.h"
#include "simulator/pedal/SimulatedPedal.h"
#include "tests/support/Files.h"

namespace cabslot::fuzz {
namespace {

using simulator::Frame;
using simulator::FrameParser;
using simulator::Report;
using simulator::SimulatedPedal;
using std::chrono::milliseconds;

constexpr std::size_t streamLimit = 3500; // more than a whole import
constexpr std::size_t longestHeld = 1023;
constexpr milliseconds tickTime{500};
constexpr milliseconds announcements{5000};
enum Odd : std::uint8_t { announces = 0x40, cannotStore = 0x80 }; // beside the faults

/// The bytes that a frame was made of.
Bytes bytesOf(const Frame& frame) {
    if (frame.command)
        return simulator::encodeFrame(*frame.command, frame.payload);
    return {0xAA, 0x55, 0, 0, 0xFF, 0xFF};
}

/// What a parser finds that is fed with `pieces` of the stream.
template<typename NextSize>
void demandFound(View stream, const Bytes& expected, NextSize next) {
    FrameParser parser;
    Bytes found;
    std::size_t skipped = 0;
    for (std::size_t fed = 0; fed < stream.size();) {
        const std::size_t size = std::min(next(), stream.size() - fed);
        for (const Frame& frame : parser.feed(stream.subspan(fed, size)))
            append(found, bytesOf(frame));
        fed += size;
        skipped += parser.takeSkipped();
        demand(fed >= found.size() + skipped, "no byte is used twice");
        demand(fed - found.size() - skipped <= longestHeld, "less than one frame is held");
    }
    demand(found == expected, "the frames found are those of the rules, however they are cut");
}

void demandSameFrames(View stream, Pieces pieces) {
    Bytes expected;
    for (const StreamEvent& event : eventsOf(stream)) {
        if (event.isFrame)
            append(expected, stream.subspan(event.begin, event.end - event.begin));
    }
    demandFound(stream, expected, [&] { return stream.size(); });
    demandFound(stream, expected, [&] { return pieces.next().size; });
}

/// A pedal with its log counted, and all that it has sent.
class WatchedPedal {
public:
    WatchedPedal(simulator::PedalStore& store, const simulator::PedalOptions& options)
        : options_(options), pedal_(store, options, [this](const std::string& line) {
              stored_ += line.starts_with("stored ") ? 1U : 0U;
              confirmed_ += line.starts_with("confirmed ") ? 1U : 0U;
          }) {}

    void receive(View report) {
        pedal_.receiveReport(report, now_);
        take();
    }

    void wait(std::size_t ticks) {
        now_ += tickTime * ticks;
        take();
    }

    /// `imports` were finished in all.
    void demandReplies(std::size_t imports, bool canStore) const {
        demand(stored_ == (canStore ? imports : 0), "every finished import is stored");
        demand(confirmed_ <= stored_, "only what was stored is confirmed");
        demand(confirmed_ == 0 || !options_.faults.neverConfirm, "nor is what never shall be");
        if (options_.faults.corruptCrc)
            return;
        std::size_t confirmations = 0;
        for (const StreamEvent& event : eventsOf(sent_))
            confirmations += event.isFrame && sent_[event.begin + 4] == 0xF8 ? 1U : 0U;
        demand(confirmations == confirmed_, "a confirmation is a good frame");
    }

private:
    void take() {
        const bool due = pedal_.nextDue() && *pedal_.nextDue() <= now_;
        const std::vector<Report> reports = pedal_.takeReports(now_);
        demand(due == !reports.empty(), "when there is something is told before");
        for (const Report& report : reports) {
            demand(report[0] >= 1 && report[0] <= (options_.faults.split ? 7 : 63),
                   "a report counts its bytes");
            append(sent_, View(report).subspan(1, report[0]));
        }
        demand(pedal_.takeReports(now_).empty(), "a report is handed out once");
        demand(!pedal_.nextDue() || *pedal_.nextDue() > now_, "what is due has been handed out");
    }

    const simulator::PedalOptions options_;
    SimulatedPedal::TimePoint now_{};
    std::size_t stored_ = 0;
    std::size_t confirmed_ = 0;
    Bytes sent_;
    SimulatedPedal pedal_;
};

// All that change what a pedal sends or when, but for a flood, which is only a matter of amount,
// and a confirmation ahead of its import, which breaks what is demanded here.
constexpr bool simulator::Faults::*switchedFaults[] = {
    &simulator::Faults::corruptCrc,   &simulator::Faults::garbage,
    &simulator::Faults::split,        &simulator::Faults::merge,
    &simulator::Faults::neverConfirm, &simulator::Faults::confirmAtOnce,
};

simulator::PedalOptions optionsFor(std::uint8_t faults) {
    simulator::PedalOptions options;
    unsigned bit = 1;
    for (const auto fault : switchedFaults) {
        options.faults.*fault = (faults & bit) != 0;
        bit <<= 1;
    }
    options.announceEvery = (faults & announces) != 0 ? announcements : milliseconds{0};
    return options;
}

simulator::PedalStore storeFor(std::uint8_t faults) {
    if ((faults & cannotStore) == 0)
        return simulator::PedalStore{};
    const testing::TempFolder goesAtOnce;
    std::string why;
    return simulator::PedalStore::open(goesAtOnce.path(), why).value();
}

void demandPedalInOrder(View stream, Pieces pieces, std::uint8_t faults) {
    simulator::PedalStore store = storeFor(faults);
    WatchedPedal pedal(store, optionsFor(faults));
    const bool canStore = (faults & cannotStore) == 0;
    const StoredImports imports = importsIn(stream);
    while (!stream.empty()) {
        const Pieces::Piece piece = pieces.next();
        Report report;
        report.fill(0xAA);
        report[0] = static_cast<std::uint8_t>(piece.size);
        if (piece.size == report.size())
            pedal.receive(report); // counts more than it has
        if (piece.ticks == 3)
            pedal.receive(View(report).first(piece.size - 1)); // is cut
        const View bytes = stream.first(std::min({piece.size, report.size() - 1, stream.size()}));
        report[0] = static_cast<std::uint8_t>(bytes.size());
        std::copy(bytes.begin(), bytes.end(), report.begin() + 1);
        stream = stream.subspan(bytes.size());
        pedal.receive(report);
        pedal.wait(piece.ticks);
    }
    pedal.wait(4);
    pedal.demandReplies(imports.count, canStore);
    for (std::size_t i = 0; i < slotCount; ++i) {
        demand(!canStore || imports.slots[i].empty() || holds(store.slot(i), imports.slots[i]),
               "a slot holds what its last import carried");
    }
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    Input input(data, size);
    const std::uint8_t faults = input.byte();
    const Pieces pieces(input);
    const Bytes stream = streamFromScript(input, streamLimit);
    demandSameFrames(stream, pieces);
    demandPedalInOrder(stream, pieces, faults);
    return 0;
}
