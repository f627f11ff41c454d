// preset: shows, checks and creates preset files; needs no pedal. Its subcommands are show (in
// PresetShow.h), verify, new, export and import.
#pragma once

#include "cli/Commands.h"

namespace cabslot {

class PresetCommand final : public CommandGroup {
public:
    PresetCommand(Arguments& program, CommonOptions& options);
};

} // namespace cabslot
