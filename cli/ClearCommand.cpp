#include "cli/ClearCommand.h"

#include "platform/BundlePath.h"

#include <numeric>

namespace cabslot {

ClearCommand::ClearCommand(Arguments& program, CommonOptions& options)
    : SlotCommand(program, options, "clear", "Load silence into slots, under their default names") {
    arguments().add({.name = "SLOT",
                     .help = "The user slots, " + slotNumbers(),
                     .reader = intoSlots(slots_),
                     .many = true});
    arguments().addFlag("--all", all_, "Clear all slots");
    arguments().addCheck([this] { return whatIsWrong(); });
}

std::string ClearCommand::whatIsWrong() const {
    if (slots_.empty() && !all_)
        return "SLOT (or --all) is required";
    if (!slots_.empty() && all_)
        return "give either slots or --all";
    return whyRepeated(slots_);
}

ExitStatus ClearCommand::run() {
    const auto blank = checkedJob(1, blankIRPath(bundlePath()), {});
    if (!blank)
        return ExitStatus::fileRefused;
    std::vector<std::uint32_t> slots = slots_;
    if (all_) {
        slots.resize(slotCount);
        std::iota(slots.begin(), slots.end(), 1U);
    }
    std::vector<SlotJob> jobs;
    jobs.reserve(slots.size());
    for (const std::uint32_t slot : slots)
        jobs.push_back({.slot = slot, .ir = blank->ir, .clearing = true});
    return upload(jobs);
}

} // namespace cabslot
