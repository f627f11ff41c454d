// The common part of load and clear: uploads to one or more slots in one session with a pedal.
#pragma once

#include "cli/Command.h"
#include "cli/PedalSession.h"
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
    bool clearing = false; ///< loads silence instead, under the slot's default name
};

class SlotCommand : public Command {
protected:
    SlotCommand(Arguments& program, PedalOptions& pedal, const std::string& name,
                const std::string& description);

    /// "1 to 4"
    static std::string slotNumbers();

    /// A validator: empty for a slot's number, else what is wrong.
    static std::string whyNoSlot(const std::string& slot);

    /// The number in a text that whyNoSlot() accepts.
    static std::uint32_t slotOf(const std::string& slot);

    /// Reads the numbers of slots.
    static Reader intoSlots(std::vector<std::uint32_t>& slots);

    /// What is wrong if a slot is named twice; else empty.
    static std::string whyRepeated(std::vector<std::uint32_t> slots);

    /// The IR file at `path`, unchanged or prepared; nothing if it cannot be loaded. Reports why,
    /// and what preparing did.
    static std::optional<IR> checkedIR(const std::string& path, bool prepares = false);

    /// Uploads in the order of the arguments and reports each confirmation. Stops at the first
    /// failure and returns its status.
    ExitStatus upload(const std::vector<SlotJob>& jobs) const;

private:
    PedalOptions& pedal_;
    double confirmTimeout_ =
        std::chrono::duration<double>(confirmationPollLimit * pollPeriod).count();
};

} // namespace cabslot
