// history: shows what was loaded into the slots from this computer; needs no pedal.
#pragma once

#include "cli/Command.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cabslot {

class HistoryCommand final : public Command {
public:
    HistoryCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    std::vector<std::uint32_t> slots() const;

    CommonOptions& options_;
    std::string slot_; ///< empty: all
    bool json_ = false;
};

} // namespace cabslot
