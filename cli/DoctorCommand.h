// doctor: whether there is a pedal on USB that can be used, and if not, what to do.
#pragma once

#include "cli/Command.h"

namespace cabslot {

/// Looks at USB whatever --pedal says and talks to no pedal. Ends with `done` when a pedal can be
/// used, else with `noPedal`.
class DoctorCommand final : public Command {
public:
    explicit DoctorCommand(CLI::App& app);
    ExitStatus run() override;

private:
    bool json_ = false;
};

} // namespace cabslot
