// clear: silence into a slot, under its default name.
#pragma once

#include "cli/SlotCommand.h"

namespace cabslot {

class ClearCommand final : public SlotCommand {
public:
    ClearCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;
};

} // namespace cabslot
