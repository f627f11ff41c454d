// What load and clear share: one slot's upload on a pedal, and how its end is told.
#pragma once

#include "cli/Command.h"
#include "cli/PedalSession.h"
#include "upload/SlotUpload.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace cabslot {

class SlotCommand : public Command {
protected:
    SlotCommand(CLI::App& app, PedalOptions& pedal, const std::string& name,
                const std::string& description);

    /// Checks the IR file before the pedal is touched, then loads it: under its own name, or, when
    /// `clearing`, under the slot's default name.
    ExitStatus loadIntoSlot(const std::string& file, bool clearing);

private:
    PedalOptions& pedal_;
    std::uint32_t slot_ = 0;
    double confirmTimeout_ =
        std::chrono::duration<double>(confirmationPollLimit * pollPeriod).count();
};

} // namespace cabslot
