// prepare: makes the best 1024 points of IR files and writes them as WAV files; needs no pedal.
#pragma once

#include "cli/Command.h"
#include "cli/OutputFiles.h"
#include "cli/PrepareSwitches.h"

#include <string>
#include <vector>

namespace cabslot {

/// One file into another, or several into a folder.
class PrepareCommand final : public Command {
public:
    PrepareCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    struct Job {
        std::string from;
        std::string to;
    };

    struct Result {
        bool isDone = false; ///< false after a Ctrl-C
        PreparedIR prepared;
        std::string whyNotWritten;
    };

    std::string whatIsWrong() const;
    std::vector<Job> jobs() const;
    OutputFiles outputsOf(const std::vector<Job>& jobs) const;
    std::string write(const Job& job, const PreparedIR& prepared, const OutputFiles& outputs) const;
    std::vector<Result> work(const std::vector<Job>& jobs, const OutputFiles& outputs) const;
    void report(const Job& job, const PreparedIR& prepared) const;

    CommonOptions& common_;
    std::vector<std::string> files_;
    std::string folder_;
    std::string plotFile_;
    bool json_ = false;
    PrepareSwitches switches_;
};

} // namespace cabslot
