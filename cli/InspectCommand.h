// inspect: shows what files would put into the pedal and any problems; needs no pedal.
#pragma once

#include "analysis/IRSummary.h"
#include "cli/Command.h"

#include <string>
#include <vector>

namespace cabslot {

/// Reports one file in detail, several files or a folder in a table.
class InspectCommand final : public Command {
public:
    InspectCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    std::string whatIsWrong() const;
    bool isForOneFile() const;
    ExitStatus inspectOne() const;

    CommonOptions& options_;
    std::vector<std::string> files_; ///< files and folders
    std::string compared_;
    std::string blockFile_;
    std::string plotFile_;
    bool recursive_ = false;
    bool json_ = false;
};

} // namespace cabslot
