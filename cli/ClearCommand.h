// clear: loads silence into slots, under their default names.
#pragma once

#include "cli/SlotCommand.h"

namespace cabslot {

class ClearCommand final : public SlotCommand {
public:
    ClearCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;

private:
    void checkUsage();

    std::vector<std::uint32_t> slots_;
    bool all_ = false;
};

} // namespace cabslot
