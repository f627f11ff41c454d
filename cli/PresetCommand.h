// preset: shows, checks and creates preset files; needs no pedal. Its subcommands are show (in
// PresetShow.h), verify, new, export and import.
#pragma once

#include "cli/Command.h"

#include <memory>
#include <vector>

namespace cabslot {

class PresetCommand final : public Command {
public:
    PresetCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    std::vector<std::unique_ptr<Command>> commands_;
};

} // namespace cabslot
