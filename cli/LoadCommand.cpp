#include "cli/LoadCommand.h"

#include "cli/Console.h"

namespace cabslot {

LoadCommand::LoadCommand(CLI::App& app, PedalOptions& pedal)
    : SlotCommand(app, pedal, "load", "Load impulse responses into slots") {
    subcommand()
        .add_option("SLOT", slot_, "The user slot, " + slotNumbers())
        ->required()
        ->type_name("")
        ->check(whyNoSlot);
    addFile("FILE", file_,
            "A WAV file (44.1, 48, 88.2 or 96 kHz; 8, 16, 24 or 32-bit float) or a factory IR "
            "file");
    subcommand()
        .add_option("MORE", more_, "Further slots and files, as SLOT FILE SLOT FILE ...")
        ->type_name("");
    subcommand().add_flag("--prepare", prepare_,
                          "Prepare each file first, as prepare does without options");
    subcommand().callback([this] { checkUsage(); });
}

std::vector<LoadCommand::Pair> LoadCommand::pairs() const {
    std::vector<Pair> all = {{slot_, file_}};
    for (std::size_t i = 0; i + 1 < more_.size(); i += 2)
        all.push_back({static_cast<std::uint32_t>(std::stoul(more_[i])), more_[i + 1]});
    return all;
}

void LoadCommand::checkUsage() const {
    for (std::size_t i = 0; i < more_.size(); i += 2) {
        if (std::string why = whyNoSlot(more_[i]); !why.empty())
            throw CLI::ValidationError(why);
        if (i + 1 == more_.size())
            throw CLI::ValidationError("slot " + more_[i] + " has no file");
    }
    std::vector<std::uint32_t> slots;
    for (const Pair& pair : pairs())
        slots.push_back(pair.slot);
    rejectRepeatedSlot(slots);
}

ExitStatus LoadCommand::run() {
    const std::vector<Pair> all = pairs();
    std::vector<SlotJob> jobs;
    for (const Pair& pair : all) {
        if (const auto source = checkedSource(pair.file, prepare_))
            jobs.push_back({pair.slot, *source});
    }
    if (jobs.size() == all.size())
        return upload(jobs);
    if (all.size() > 1)
        complain("nothing was sent");
    return ExitStatus::fileRefused;
}

} // namespace cabslot
