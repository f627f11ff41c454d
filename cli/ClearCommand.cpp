#include "cli/ClearCommand.h"

#include "platform/BundlePath.h"
#include "upload/SlotUpload.h"

namespace cabslot {

ClearCommand::ClearCommand(CLI::App& app, PedalOptions& pedal)
    : SlotCommand(app, pedal, "clear", "Clear a slot: silence, under its default name") {}

ExitStatus ClearCommand::run() {
    return loadIntoSlot(blankIRPath(bundlePath()), true);
}

} // namespace cabslot
