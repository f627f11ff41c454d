// preset: shows, checks and makes preset files; needs no pedal. It has commands of its own: show
// (in PresetShow.h), verify, new, export and import.
#pragma once

#include "cli/Command.h"
#include "cli/PedalSession.h"

#include <memory>
#include <vector>

namespace cabslot {

class PresetCommand final : public Command {
public:
    PresetCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;

private:
    std::vector<std::unique_ptr<Command>> commands_;
};

} // namespace cabslot
