#include "simulator/pedal/SimulatedPedal.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace cabslot::simulator {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint8_t allDataRequestCommand = 0xEF;
constexpr std::uint8_t importCommand = 0xE9;

// The payload of an import frame: step, slot, flag, data. Step 0 carries the name; steps 1 to 6
// carry one byte of each sample of a half block, the high bytes first, the first half before the
// second.
constexpr std::size_t stepOffset = 0;
constexpr std::size_t slotOffset = 1;
constexpr std::size_t flagOffset = 2;
constexpr std::size_t importDataOffset = 3;
constexpr std::size_t planeSize = irPointCount / 2;
constexpr std::size_t planesPerHalf = 3;
constexpr std::size_t lastStep = 6;

std::string hexText(std::uint8_t byte) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", static_cast<unsigned>(byte));
    return text;
}

/// `step` is 1 to 6, `plane` 512 bytes.
void addPlane(PedalSlot& slot, std::size_t step, Bytes plane) {
    const std::size_t first = (step - 1) / planesPerHalf * planeSize;
    const std::size_t shift = 8 * (planesPerHalf - 1 - (step - 1) % planesPerHalf);
    for (std::size_t i = 0; i < plane.size(); ++i)
        slot.block[first + i] |= std::uint32_t{plane[i]} << shift;
}

} // namespace

std::string wrongLengthText(std::size_t length) {
    return "dropped a report of " + std::to_string(length) + " bytes, it must have " +
           std::to_string(reportSize);
}

SimulatedPedal::SimulatedPedal(PedalStore& store, const PedalBehaviour& options, Log log,
                               Log failed)
    : store_(store), options_(options), log_(std::move(log)), failed_(std::move(failed)) {
    if (options_.announceEvery.count() > 0)
        announcementDue_ = TimePoint::min();
}

void SimulatedPedal::receiveReport(Bytes report, TimePoint now) {
    if (report.size() != reportSize) {
        say(wrongLengthText(report.size()));
        return;
    }
    const std::size_t count = report[0];
    if (count > reportCapacity) {
        say("dropped a report that counts " + std::to_string(count) + " bytes, it can hold " +
            std::to_string(reportCapacity));
        return;
    }
    const std::vector<Frame> frames = parser_.feed(report.subspan(1, count));
    if (const std::size_t skipped = parser_.takeSkipped(); skipped > 0)
        say("skipped bytes outside frames: " + std::to_string(skipped));
    for (const Frame& frame : frames)
        handle(frame, now);
}

void SimulatedPedal::handle(const Frame& frame, TimePoint now) {
    if (!frame.command) {
        say("zero-length frame"); // the first frame a host sends; it expects no answer
    } else if (*frame.command == importCommand) {
        handleImport(frame.payload, now);
    } else if (*frame.command != allDataRequestCommand) {
        say("unknown command " + hexText(*frame.command));
    } else if (!frame.payload.empty()) {
        say("dropped a request for all data: it has a payload of " +
            std::to_string(frame.payload.size()) + " bytes");
    } else {
        say("all data requested");
        send(allDataReply(store_, options_.faults));
    }
}

/// Why this frame is not the next one of an import; empty if it is. Step 0 always starts an import.
std::string SimulatedPedal::whyNoImport(Bytes payload) const {
    if (payload.size() <= importDataOffset || payload[stepOffset] > lastStep)
        return "no such step";
    const std::size_t step = payload[stepOffset];
    const std::size_t expected = importDataOffset + (step == 0 ? sentNameSize : planeSize);
    if (payload.size() != expected) {
        return "step " + std::to_string(step) + " has a payload of " +
               std::to_string(payload.size()) + " bytes, not " + std::to_string(expected);
    }
    if (payload[slotOffset] < 1 || payload[slotOffset] > slotCount)
        return "there is no slot " + std::to_string(payload[slotOffset]);
    if (step == 0)
        return {};
    if (!import_)
        return "step " + std::to_string(step) + " without the steps before it";
    if (step != import_->nextStep) {
        return "step " + std::to_string(step) + " instead of step " +
               std::to_string(import_->nextStep);
    }
    if (payload[slotOffset] != import_->slotNumber) {
        return "the slot changed from " + std::to_string(import_->slotNumber) + " to " +
               std::to_string(payload[slotOffset]);
    }
    return payload[flagOffset] == import_->flag ? "" : "the factory flag changed on the way";
}

void SimulatedPedal::handleImport(Bytes payload, TimePoint now) {
    const std::string why = whyNoImport(payload);
    if (!why.empty()) {
        say("dropped an import: " + why);
        import_.reset();
        return;
    }
    const std::size_t step = payload[stepOffset];
    const Bytes data = payload.subspan(importDataOffset);
    if (step == 0) {
        if (import_)
            say("dropped an import: a new one begins at step " + std::to_string(import_->nextStep));
        import_ = Import{payload[slotOffset], payload[flagOffset], 0, PedalSlot{}};
        import_->content.factory = import_->flag != 0;
        std::copy(data.begin(), data.end(), import_->content.name.begin()); // byte 15 stays 0
        if (options_.faults.confirmEarly)
            confirmationDue_[import_->slotNumber - 1] = now;
    } else {
        addPlane(import_->content, step, data);
    }
    say("import step " + std::to_string(step) + " of slot " + std::to_string(import_->slotNumber));
    import_->nextStep = step + 1;
    if (step == lastStep) {
        finishImport(now);
        import_.reset();
    }
}

void SimulatedPedal::finishImport(TimePoint now) {
    const std::size_t number = import_->slotNumber;
    const PedalSlot& content = import_->content;
    std::string why;
    if (!store_.store(number - 1, content, why)) {
        why = "could not store " + defaultSlotName(number) + ", it will not be confirmed: " + why;
        say(why);
        if (failed_)
            failed_(why);
        return;
    }
    say("stored " + defaultSlotName(number) + ": \"" + shownName(content) + "\" (" +
        (content.factory ? "factory" : "not factory") + ")");
    if (options_.faults.neverConfirm || options_.faults.confirmEarly) {
        say("will not confirm " + defaultSlotName(number));
        return;
    }
    const bool atOnce = options_.faults.confirmAtOnce;
    confirmationDue_[number - 1] = atOnce ? now : now + options_.confirmDelay;
}

std::vector<Report> SimulatedPedal::takeReports(TimePoint now) {
    for (std::size_t i = 0; i < slotCount; ++i) {
        if (confirmationDue_[i] && *confirmationDue_[i] <= now) {
            confirmationDue_[i].reset();
            send(confirmationReply(options_.faults));
            say("confirmed " + defaultSlotName(i + 1));
        }
    }
    if (announcementDue_ && *announcementDue_ <= now) {
        announcementDue_ = now + options_.announceEvery;
        send(allDataReply(store_, options_.faults));
    }
    return std::exchange(outgoing_, {});
}

std::optional<SimulatedPedal::TimePoint> SimulatedPedal::nextDue() const {
    std::optional<TimePoint> next = announcementDue_;
    for (const auto& due : confirmationDue_)
        if (due && (!next || *due < *next))
            next = due;
    return outgoing_.empty() ? next : TimePoint::min();
}

void SimulatedPedal::send(const std::vector<Report>& reports) {
    outgoing_.insert(outgoing_.end(), reports.begin(), reports.end());
}

void SimulatedPedal::say(const std::string& line) const {
    if (log_)
        log_(line);
}

} // namespace cabslot::simulator
