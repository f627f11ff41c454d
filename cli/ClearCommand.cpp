#include "cli/ClearCommand.h"

#include "platform/BundlePath.h"

#include <numeric>

namespace cabslot {

ClearCommand::ClearCommand(CLI::App& app, PedalOptions& pedal)
    : SlotCommand(app, pedal, "clear", "Load silence into slots, under their default names") {
    subcommand()
        .add_option("SLOT", slots_, "The user slots, " + slotNumbers())
        ->type_name("")
        ->check(whyNoSlot);
    subcommand().add_flag("--all", all_, "Clear all slots");
    subcommand().callback([this] { checkUsage(); });
}

void ClearCommand::checkUsage() {
    if (slots_.empty() && !all_)
        throw CLI::RequiredError("SLOT (or --all)");
    if (!slots_.empty() && all_)
        throw CLI::ValidationError("give either slots or --all");
    rejectRepeatedSlot(slots_);
    if (all_) {
        slots_.resize(slotCount);
        std::iota(slots_.begin(), slots_.end(), 1U);
    }
}

ExitStatus ClearCommand::run() {
    const auto blank = checkedSource(blankIRPath(bundlePath()));
    if (!blank)
        return ExitStatus::fileRefused;
    std::vector<SlotJob> jobs;
    for (const std::uint32_t slot : slots_)
        jobs.push_back({slot, *blank, true});
    return upload(jobs);
}

} // namespace cabslot
