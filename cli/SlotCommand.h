// The common part of load and clear: uploads to one or more slots in one session with a pedal.
#pragma once

#include "analysis/Findings.h"
#include "cli/Command.h"
#include "cli/PedalSession.h"
#include "cli/SlotNumbers.h"
#include "irfile/IR.h"
#include "upload/SlotUpload.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

/// The upload to one slot.
struct SlotJob {
    std::uint32_t slot = 0; ///< 1 to 4
    IR ir{};
    std::vector<Finding> findings{}; ///< about the file, to be remembered
    bool clearing = false;           ///< loads silence instead, under the slot's default name
};

class SlotCommand : public Command {
protected:
    SlotCommand(Arguments& program, CommonOptions& options, const std::string& name,
                const std::string& description);

    struct LoadOptions {
        std::optional<std::string> name{}; ///< instead of the file's; checkSlotName() accepts it
        bool prepares = false;
    };

    /// The upload of the IR file at `path`; nothing if it cannot be loaded. Reports why, and what
    /// preparing did.
    static std::optional<SlotJob> checkedJob(std::uint32_t slot, const std::string& path,
                                             const LoadOptions& load);

    /// Uploads in the order of the arguments and reports each confirmation. Stops at the first
    /// failure and returns its status.
    ExitStatus upload(const std::vector<SlotJob>& jobs) const;

    /// The same in a session that is connected already.
    ExitStatus upload(const std::vector<SlotJob>& jobs, const PedalSession& session) const;

    CommonOptions& options() const { return options_; }

private:
    static std::vector<std::string> sourcesOf(const std::vector<SlotJob>& jobs);

    CommonOptions& options_;
    double confirmTimeout_ =
        std::chrono::duration<double>(confirmationPollLimit * pollPeriod).count();
};

} // namespace cabslot
