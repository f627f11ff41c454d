// load: an IR file into a slot.
#pragma once

#include "cli/SlotCommand.h"

namespace cabslot {

class LoadCommand final : public SlotCommand {
public:
    LoadCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;

private:
    std::string file_;
};

} // namespace cabslot
