// clear: loads silence into slots, under their default names.
#pragma once

#include "cli/SlotCommand.h"

namespace cabslot {

class ClearCommand final : public SlotCommand {
public:
    ClearCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    std::string whatIsWrong() const;

    std::vector<std::uint32_t> slots_;
    bool all_ = false;
};

} // namespace cabslot
