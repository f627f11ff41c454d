// list: shows the names of the four slots, as the pedal sends them.
#pragma once

#include "cli/Command.h"
#include "cli/PedalSession.h"

namespace cabslot {

class ListCommand final : public Command {
public:
    ListCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    CommonOptions& options_;
    bool json_ = false;
};

} // namespace cabslot
