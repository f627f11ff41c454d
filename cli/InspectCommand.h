// inspect: what a file would put into the pedal and what is odd about it; needs no pedal.
#pragma once

#include "analysis/IRSummary.h"
#include "cli/Command.h"

#include <string>

namespace cabslot {

class InspectCommand final : public Command {
public:
    explicit InspectCommand(CLI::App& app);
    ExitStatus run() override;

private:
    bool writeFiles(const IRSummary& summary, const Block& block) const;

    std::string file_;
    std::string blockFile_;
    std::string plotFile_;
    bool json_ = false;
};

} // namespace cabslot
