#include "cli/SlotCommand.h"

#include "analysis/IRSummary.h"
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

/// After a failure: reports how many slots were confirmed and which were not sent.
void reportRest(std::size_t confirmed, std::size_t all, std::span<const SlotJob> notTried) {
    if (all == 1)
        return;
    std::string line = std::to_string(confirmed) + " of " + std::to_string(all) + " confirmed";
    for (const SlotJob& job : notTried)
        line += (&job == notTried.data() ? "; not sent: " : ", ") + defaultSlotName(job.slot);
    complain(line);
}

} // namespace

SlotCommand::SlotCommand(Arguments& program, CommonOptions& options, const std::string& name,
                         const std::string& description)
    : Command(program, name, description), options_(options) {
    addTimeout(options.timeout);
    addSeconds("--confirm-timeout", confirmTimeout_,
               "How long to wait for the pedal to confirm, for each slot");
}

std::optional<SlotJob> SlotCommand::checkedJob(std::uint32_t slot, const std::string& path,
                                               const LoadOptions& load) {
    ReadIR read = load.name ? readIRAs(*load.name, path, interrupted) : readIR(path, interrupted);
    if (!read) {
        refuse(path, read.whyRefused);
        return {};
    }
    SlotJob job{.slot = slot, .ir = read.ir, .findings = summaryOf(read).findings};
    if (!load.prepares || read.ir.factory) // a factory IR has nothing to prepare
        return job;
    PreparedIR prepared = prepare(read, {});
    for (const std::string& sentence : prepared.steps)
        complain(std::string(path).append(": ").append(sentence));
    job.ir = prepared.ir;
    job.ir.name = read.ir.name;
    job.findings = summaryOf(job.ir.block, {}, {}).findings;
    return job;
}

std::vector<std::string> SlotCommand::sourcesOf(const std::vector<SlotJob>& jobs) {
    std::vector<std::string> sources;
    sources.reserve(jobs.size());
    for (const SlotJob& job : jobs)
        sources.push_back(job.ir.source);
    return sources;
}

ExitStatus SlotCommand::upload(const std::vector<SlotJob>& jobs) const {
    PedalSession session(options_);
    const ExitStatus connected = session.connect(sourcesOf(jobs));
    return connected == ExitStatus::done ? upload(jobs, session) : connected;
}

ExitStatus SlotCommand::upload(const std::vector<SlotJob>& jobs,
                               const PedalSession& session) const {
    const UploadOptions options = {
        .arming = Arming::withLastFrame,
        .confirmationPolls = static_cast<std::uint32_t>(confirmTimeout_ * (1s / pollInterval))};
    SlotMemory memory(options_.pedal, complain);
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const SlotJob& job = jobs[i];
        const std::string replaced = IRNameArr.at(job.slot - 1);
        const UploadResult result = uploadOne(jobs, i, options, session);
        const bool confirmed = result.end == UploadEnd::confirmed;
        if (confirmed)
            reportConfirmed(job.slot);
        if (confirmed || result.end == UploadEnd::notConfirmed) {
            SlotRecord record = recordOf(stagedIR(sourceToTell(job)), replaced);
            record.findings = job.findings;
            record.confirmed = confirmed;
            memory.remember(job.slot, record);
        }
        if (confirmed)
            continue;
        const ExitStatus status = reportFailure(job, result, session);
        reportRest(i, jobs.size(), std::span(jobs).subspan(i + 1));
        return status;
    }
    return ExitStatus::done;
}

} // namespace cabslot
