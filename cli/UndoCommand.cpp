#include "cli/UndoCommand.h"

#include "cli/Console.h"
#include "device/SharedState.h"
#include "memory/SlotMemory.h"

namespace cabslot {

UndoCommand::UndoCommand(Arguments& program, CommonOptions& options)
    : SlotCommand(program, options, "undo",
                  "Load what a slot held before; again, to bring back what it held after") {
    arguments().add({.name = "SLOT",
                     .help = "The user slot, " + slotNumbers(),
                     .reader = into(slot_, whyNoSlot),
                     .required = true});
}

ExitStatus UndoCommand::run() {
    PedalSession session(options());
    if (const ExitStatus connected = session.connect(); connected != ExitStatus::done)
        return connected;
    const std::uint32_t slot = slotOf(slot_);
    const auto before =
        SlotMemory(options().pedal, complain).undoTarget(slot, IRNameArr.at(slot - 1));
    if (before)
        return upload({{.slot = slot, .ir = before->ir, .findings = before->findings}}, session);
    complain("this computer does not know what " + defaultSlotName(slot) +
             " held before; \"cabslotctl history " + slot_ + "\" shows what it knows");
    return ExitStatus::fileRefused;
}

} // namespace cabslot
