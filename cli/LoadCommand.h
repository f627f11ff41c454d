// load: loads IR files into slots.
#pragma once

#include "cli/SlotCommand.h"

namespace cabslot {

/// Checks all files before it contacts the pedal: if one is refused, nothing is sent.
class LoadCommand final : public SlotCommand {
public:
    LoadCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    struct Pair {
        std::uint32_t slot;
        std::string file;
    };

    std::vector<Pair> pairs() const;
    std::string whatIsWrong() const;

    std::string slot_;
    std::string file_;
    std::vector<std::string> more_; ///< slot, file, slot, file ...
    std::string name_;
    bool prepare_ = false;
};

} // namespace cabslot
