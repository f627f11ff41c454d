// doctor: reports whether the pedal on USB can be used, and if not, what to do.
#pragma once

#include "cli/Command.h"

namespace cabslot {

/// Looks at USB regardless of --pedal and does not talk to the pedal. Returns `done` if a pedal can
/// be used, else `noPedal`.
class DoctorCommand final : public Command {
public:
    explicit DoctorCommand(Arguments& program);
    ExitStatus run() override;

private:
    bool json_ = false;
};

} // namespace cabslot
