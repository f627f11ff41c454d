// set: saves, shows, loads, exports and makes sets, which are files with the four slots' contents.
// Only save and load need a pedal. Its commands are show (in SetShow.h), save, load, export and
// new.
#pragma once

#include "cli/Commands.h"

namespace cabslot {

class SetCommand final : public CommandGroup {
public:
    SetCommand(Arguments& program, CommonOptions& options);
};

} // namespace cabslot
