// inspect: what a file would put into the pedal and what is odd about it; needs no pedal.
#pragma once

#include "analysis/IRSummary.h"
#include "cli/Command.h"
#include "cli/PedalSession.h"

#include <string>

namespace cabslot {

class InspectCommand final : public Command {
public:
    InspectCommand(CLI::App& app, PedalOptions& pedal);
    ExitStatus run() override;

private:
    bool writeFiles(const IRSummary& summary, const Block& block) const;

    std::string file_;
    std::string blockFile_;
    std::string plotFile_;
    bool json_ = false;
};

} // namespace cabslot
