// load: loads IR files into slots.
#pragma once

#include "cli/SlotCommand.h"
#include "cli/SlotFiles.h"

#include <string>

namespace cabslot {

/// Checks all files before it contacts the pedal: if one is refused, nothing is sent.
class LoadCommand final : public SlotCommand {
public:
    LoadCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    SlotFiles files_;
    std::string name_;
    bool prepare_ = false;
};

} // namespace cabslot
