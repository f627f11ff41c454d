// preset: looks at preset files and makes them; needs no pedal.
#pragma once

#include "cli/Command.h"

#include <memory>
#include <vector>

namespace cabslot {

/// preset show, verify, new, export, import
class PresetCommand final : public Command {
public:
    explicit PresetCommand(CLI::App& app);
    ExitStatus run() override;

private:
    std::vector<std::unique_ptr<Command>> commands_;
};

} // namespace cabslot
