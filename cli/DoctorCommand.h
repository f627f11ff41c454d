// doctor: whether there is a pedal on USB that can be used, and if not, what to do.
#pragma once

#include "cli/Command.h"

namespace cabslot {

/// Looks at USB whatever --pedal says; talks to no pedal. The answer goes to standard output.
/// `done` when a pedal can be used, else `noPedal`.
class DoctorCommand final : public Command {
public:
    explicit DoctorCommand(CLI::App& app);
    ExitStatus run() override;

private:
    bool json_ = false;
};

} // namespace cabslot
