#include "cli/SlotCommand.h"

#include "cli/Console.h"
#include "device/DeviceCommands.h"
#include "device/SharedState.h"
#include "irfile/IRFile.h"
#include "memory/SlotMemory.h"
#include "platform/BundlePath.h"
#include "prepare/Prepare.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <span>
#include <thread>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 10ms;

// Shows the upload's progress; abandons the upload if the pedal is gone.
class UploadProgress final : public UploadWait {
public:
    UploadProgress(const PedalSession& session, std::string label)
        : session_(session), label_(std::move(label)) {}

    // Ctrl-C is ignored here: seven frames take 0.14 s, and half an IR is of no use.
    bool waitForUpload() override {
        line_.show(label_ + ": sending frame " + std::to_string(step + 1) + " of " +
                   std::to_string(uploadFrameCount));
        std::this_thread::sleep_for(pollInterval);
        return !session_.lost();
    }

    bool waitForConfirmation(std::uint32_t poll) override {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(poll * pollInterval);
        line_.show(label_ + ": sent, waiting for the pedal to confirm, " +
                   std::to_string(seconds.count()) + " s");
        std::this_thread::sleep_for(pollInterval);
        return !session_.lost() && !interrupted();
    }

private:
    const PedalSession& session_;
    std::string label_;
    ProgressLine line_;
};

ExitStatus refuse(const std::string& file, const std::string& why) {
    complain(file + ": " + why);
    return ExitStatus::fileRefused;
}

UploadResult uploadOne(const std::vector<SlotJob>& jobs, std::size_t index,
                       const UploadOptions& options, const PedalSession& session) {
    const SlotJob& job = jobs[index];
    std::string label = defaultSlotName(job.slot);
    if (jobs.size() > 1)
        label = std::to_string(index + 1) + " of " + std::to_string(jobs.size()) + ", " + label;
    UploadProgress progress(session, label);
    return job.clearing ? clearSlot(job.slot, bundlePath(), options, progress)
                        : loadSlot(job.slot, job.ir, options, progress);
}

void reportConfirmed(std::uint32_t slot) {
    std::cout << defaultSlotName(slot) << ": " << shownName(IRNameArr.at(slot - 1))
              << std::endl; // flushed, so that it is reported whatever follows
}

std::string sourceToTell(const SlotJob& job) {
    return job.clearing ? std::string() : job.ir.source;
}

ExitStatus reportFailure(const SlotJob& job, const UploadResult& result,
                         const PedalSession& session) {
    const std::string name = defaultSlotName(job.slot);
    if (isRefused(result.end)) // the blank IR changed after it was checked
        return refuse(blankIRPath(bundlePath()), result.whyRefused);
    if (result.end == UploadEnd::notConfirmed) {
        complain("the pedal did not confirm in time that it has stored " + name +
                 "; look with \"cabslotctl list\" and load it again if need be");
        return ExitStatus::notConfirmed;
    }
    if (session.lost())
        return session.complainAboutLoss("; " + name + " may be incomplete: load it again");
    complain("interrupted before the pedal confirmed " + name + "; look with \"cabslotctl list\"");
    return ExitStatus::interrupted;
}

/// After a failure: reports how many slots were confirmed and which were not tried.
void reportRest(std::size_t confirmed, std::size_t all, std::span<const SlotJob> notTried) {
    if (all == 1)
        return;
    std::string line = std::to_string(confirmed) + " of " + std::to_string(all) + " confirmed";
    for (const SlotJob& job : notTried)
        line += (&job == notTried.data() ? "; not sent: " : ", ") + defaultSlotName(job.slot);
    complain(line);
}

} // namespace

SlotCommand::SlotCommand(Arguments& program, PedalOptions& pedal, const std::string& name,
                         const std::string& description)
    : Command(program, name, description), pedal_(pedal) {
    addTimeout(pedal.timeout);
    addSeconds("--confirm-timeout", confirmTimeout_,
               "How long to wait for the pedal to confirm, for each slot");
}

std::string SlotCommand::slotNumbers() {
    return "1 to " + std::to_string(slotCount);
}

std::string SlotCommand::whyNoSlot(const std::string& slot) {
    for (std::size_t known = 1; known <= slotCount; ++known) {
        if (slot == std::to_string(known))
            return {};
    }
    return "there is no slot " + slot + "; there are " + slotNumbers();
}

std::uint32_t SlotCommand::slotOf(const std::string& slot) {
    return static_cast<std::uint32_t>(std::stoul(slot));
}

Reader SlotCommand::intoSlots(std::vector<std::uint32_t>& slots) {
    return [&slots](const std::string& slot) {
        std::string why = whyNoSlot(slot);
        if (why.empty())
            slots.push_back(slotOf(slot));
        return why;
    };
}

std::string SlotCommand::whyRepeated(std::vector<std::uint32_t> slots) {
    std::ranges::sort(slots);
    const auto twice = std::ranges::adjacent_find(slots);
    if (twice == slots.end())
        return {};
    return "slot " + std::to_string(*twice) + " is named twice";
}

std::optional<IR> SlotCommand::checkedIR(const std::string& path, bool prepares) {
    ReadIR read = readIR(path, interrupted);
    if (!read) {
        refuse(path, read.whyRefused);
        return {};
    }
    if (!prepares || read.ir.factory) // a factory IR has nothing to prepare
        return read.ir;
    PreparedIR prepared = prepare(read, {});
    for (const std::string& sentence : prepared.steps)
        complain(std::string(path).append(": ").append(sentence));
    return prepared.ir;
}

ExitStatus SlotCommand::upload(const std::vector<SlotJob>& jobs) const {
    PedalSession session(pedal_);
    if (const ExitStatus connected = session.connect(); connected != ExitStatus::done)
        return connected;

    const UploadOptions options = {
        .arming = Arming::withLastFrame,
        .confirmationPolls = static_cast<std::uint32_t>(confirmTimeout_ * (1s / pollInterval))};
    SlotMemory memory(pedal_.pedal, complain);
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const std::string replaced = IRNameArr.at(jobs[i].slot - 1);
        const UploadResult result = uploadOne(jobs, i, options, session);
        if (result.end != UploadEnd::confirmed) {
            const ExitStatus status = reportFailure(jobs[i], result, session);
            reportRest(i, jobs.size(), std::span(jobs).subspan(i + 1));
            return status;
        }
        reportConfirmed(jobs[i].slot);
        memory.remember(jobs[i].slot, recordOf(stagedIR(sourceToTell(jobs[i])), replaced));
    }
    return ExitStatus::done;
}

} // namespace cabslot
