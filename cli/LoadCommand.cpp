#include "cli/LoadCommand.h"

#include "cli/Console.h"
#include "irfile/SlotName.h"

#include <utility>

namespace cabslot {

LoadCommand::LoadCommand(Arguments& program, CommonOptions& options)
    : SlotCommand(program, options, "load", "Load impulse responses into slots") {
    files_.addTo(arguments());
    arguments().add({.name = "--name",
                     .help = "The slot's name in the pedal, up to ten characters of plain ASCII; "
                             "from the file's name if not given",
                     .reader = into(name_, checkSlotName),
                     .type = "NAME"});
    arguments().addFlag("--prepare", prepare_,
                        "Prepare each file first, as prepare does without options");
    arguments().addCheck([this] {
        std::string wrong = files_.whatIsWrong();
        if (wrong.empty() && !name_.empty() && files_.pairs().size() > 1)
            wrong = "--name takes a single slot and file";
        return wrong;
    });
}

ExitStatus LoadCommand::run() {
    const std::vector<SlotFiles::Pair> all = files_.pairs();
    LoadOptions load{.prepares = prepare_};
    if (!name_.empty())
        load.name = name_;
    std::vector<SlotJob> jobs;
    for (const SlotFiles::Pair& pair : all) {
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
