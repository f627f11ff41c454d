// What load and clear share: uploads to one or more slots in one session with a pedal.
#pragma once

#include "cli/Command.h"
#include "cli/PedalSession.h"
#include "upload/SlotUpload.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

/// What one slot is to get.
struct SlotJob {
    std::uint32_t slot = 0; ///< 1 to 4
    IRSource source;        ///< checked already
    bool clearing = false;  ///< under the slot's default name, not the source's
};

class SlotCommand : public Command {
protected:
    SlotCommand(CLI::App& app, PedalOptions& pedal, const std::string& name,
                const std::string& description);

    /// "1 to 4"
    static std::string slotNumbers();

    /// A check for an option's value: empty for the number of a slot, else what is wrong.
    static std::string whyNoSlot(const std::string& slot);

    /// Ends the parsing with what is wrong when a slot is there twice.
    static void rejectRepeatedSlot(std::vector<std::uint32_t> slots);

    /// The IR file at `path`, as it is or prepared; nothing, and told, when a pedal cannot be
    /// loaded with it. What preparing did is told.
    static std::optional<IRSource> checkedSource(const std::string& path, bool prepares = false);

    /// Uploads in the order of the arguments and tells of each confirmation. The first that fails is the last
    /// that is tried; its status is returned.
    ExitStatus upload(const std::vector<SlotJob>& jobs) const;

private:
    PedalOptions& pedal_;
    double confirmTimeout_ =
        std::chrono::duration<double>(confirmationPollLimit * pollPeriod).count();
};

} // namespace cabslot
