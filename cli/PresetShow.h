// preset show: the fields of a preset file and whether it is good.
#pragma once

#include "cli/Command.h"

#include <string>

namespace cabslot {

/// As text it shows the fields of every file that is as long as a preset. As JSON it always prints
/// a document, with the fields null where there are none to show, so that a script finds `error`
/// for each refusal.
class PresetShow final : public Command {
public:
    explicit PresetShow(CLI::App& app);
    ExitStatus run() override;

private:
    std::string file_;
    bool json_ = false;
};

} // namespace cabslot
