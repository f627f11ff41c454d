// preset show: shows a preset file's fields and whether it is valid.
#pragma once

#include "cli/Command.h"

#include <string>

namespace cabslot {

/// As text, shows the fields of every file that is as long as a preset. As JSON, always prints a
/// document, in which missing fields are null, so that a script finds `error` for every refusal.
class PresetShow final : public Command {
public:
    explicit PresetShow(Arguments& program);
    ExitStatus run() override;

private:
    std::string file_;
    bool json_ = false;
};

} // namespace cabslot
