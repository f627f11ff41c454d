// set show: shows what a set holds, and any problems.
#pragma once

#include "cli/Command.h"

#include <string>

namespace cabslot {

class SetShow final : public Command {
public:
    explicit SetShow(Arguments& parent);
    ExitStatus run() override;

private:
    std::string file_;
    bool json_ = false;
};

} // namespace cabslot
