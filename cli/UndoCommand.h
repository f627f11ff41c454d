// undo: loads what a slot held before, as far as this computer knows it.
#pragma once

#include "cli/SlotCommand.h"

namespace cabslot {

/// Loads the earlier block under its earlier name, with its factory flag. Undoing again brings the
/// later one back.
class UndoCommand final : public SlotCommand {
public:
    UndoCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    std::string slot_;
};

} // namespace cabslot
