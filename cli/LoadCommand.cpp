#include "cli/LoadCommand.h"

#include "cli/Console.h"
#include "irfile/SlotName.h"

#include <utility>

namespace cabslot {

LoadCommand::LoadCommand(Arguments& program, CommonOptions& options)
    : SlotCommand(program, options, "load", "Load impulse responses into slots") {
    arguments().add({.name = "SLOT",
                     .help = "The user slot, " + slotNumbers(),
                     .reader = into(slot_, whyNoSlot),
                     .required = true});
    addFile("FILE", file_,
            "A WAV file (44.1, 48, 88.2 or 96 kHz; 8, 16, 24 or 32-bit float) or a factory IR "
            "file");
    arguments().add({.name = "MORE",
                     .help = "Further slots and files, as SLOT FILE SLOT FILE ...",
                     .reader = into(more_),
                     .many = true});
    arguments().add({.name = "--name",
                     .help = "The slot's name in the pedal, up to ten characters of plain ASCII; "
                             "from the file's name if not given",
                     .reader = into(name_, checkSlotName),
                     .type = "NAME"});
    arguments().addFlag("--prepare", prepare_,
                        "Prepare each file first, as prepare does without options");
    arguments().addCheck([this] { return whatIsWrong(); });
}

std::vector<LoadCommand::Pair> LoadCommand::pairs() const {
    std::vector<Pair> all = {{slotOf(slot_), file_}};
    for (std::size_t i = 0; i + 1 < more_.size(); i += 2)
        all.push_back({slotOf(more_[i]), more_[i + 1]});
    return all;
}

std::string LoadCommand::whatIsWrong() const {
    if (!name_.empty() && !more_.empty())
        return "--name takes a single slot and file";
    for (std::size_t i = 0; i < more_.size(); i += 2) {
        if (std::string why = whyNoSlot(more_[i]); !why.empty())
            return why;
        if (i + 1 == more_.size())
            return "slot " + more_[i] + " has no file";
    }
    std::vector<std::uint32_t> slots;
    for (const Pair& pair : pairs())
        slots.push_back(pair.slot);
    return whyRepeated(slots);
}

ExitStatus LoadCommand::run() {
    const std::vector<Pair> all = pairs();
    LoadOptions load{.prepares = prepare_};
    if (!name_.empty())
        load.name = name_;
    std::vector<SlotJob> jobs;
    for (const Pair& pair : all) {
        if (auto job = checkedJob(pair.slot, pair.file, load))
            jobs.push_back(std::move(*job));
    }
    if (jobs.size() == all.size())
        return upload(jobs);
    if (all.size() > 1)
        complain("nothing was sent");
    return interrupted() ? ExitStatus::interrupted : ExitStatus::fileRefused;
}

} // namespace cabslot
