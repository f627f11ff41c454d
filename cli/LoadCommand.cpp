#include "cli/LoadCommand.h"

namespace cabslot {

LoadCommand::LoadCommand(CLI::App& app, PedalOptions& pedal)
    : SlotCommand(app, pedal, "load", "Load an impulse response into a slot") {
    addFile("FILE", file_,
            "A WAV file (44.1, 48, 88.2 or 96 kHz; 8, 16, 24 or 32-bit float) or a factory IR "
            "file");
}

ExitStatus LoadCommand::run() {
    return loadIntoSlot(file_, false);
}

} // namespace cabslot
