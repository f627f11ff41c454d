#include "cli/CommandLine.h"

#include "arguments/Arguments.h"
#include "base/StandardStreams.h"
#include "cli/AuditionCommand.h"
#include "cli/BlendCommand.h"
#include "cli/ClearCommand.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/DoctorCommand.h"
#include "cli/HistoryCommand.h"
#include "cli/InspectCommand.h"
#include "cli/ListCommand.h"
#include "cli/LoadCommand.h"
#include "cli/PrepareCommand.h"
#include "cli/PresetCommand.h"
#include "cli/SetCommand.h"
#include "cli/Terminal.h"
#include "cli/UndoCommand.h"
#include "platform/PedalChoice.h"

#include <exception>
#include <iostream>
#include <string>

namespace cabslot {

namespace {

constexpr const char* description =
    "Load guitar-cabinet impulse responses into the four user slots of the pedal.";

constexpr const char* footer = R"(Exit status:
  0    done, and confirmed by the pedal
  1    a file was refused, or there is nothing to undo
  2    wrong usage, an output file cannot be written, or no sound device
  3    no pedal, or it was lost
  4    the pedal did not answer or confirm in time
  130  interrupted

Examples:
  cabslotctl list
  cabslotctl load 2 "Vintage 4x12.wav"
  cabslotctl load 1 Clean.wav 2 Crunch.wav 3 Lead.wav
  cabslotctl clear 2
  cabslotctl undo 2
  cabslotctl inspect Cab.wav --json
  cabslotctl inspect --recursive Pack
  cabslotctl inspect Cab.wav --plot Cab.svg
  cabslotctl audition Cab.wav --dry driven
  cabslotctl prepare Cab.wav Better.wav --level -18
  cabslotctl blend Close.wav Far.wav Both.wav --mix 60:40
  cabslotctl set save Band.cabset
  cabslotctl set load Band.cabset
  cabslotctl preset show Live.preset
  cabslotctl doctor)";

void addCommonOptions(Arguments& program, CommonOptions& options) {
    options.pedal = defaultPedal;
    program.add({.name = "--pedal",
                 .help = "The pedal to use: usb, sim or unix:PATH; usb if not given",
                 .reader = into(options.pedal, whatIsWrongWithPedal),
                 .type = "PEDAL",
                 .variable = pedalVariable});
    program.add({.name = "--trace",
                 .help = "Write every report to this file, for a bug report",
                 .reader = into(options.traceFile),
                 .type = "FILE"});
    program.addFlag("--force", options.force,
                    "Let an output or the trace replace an existing file");
}

// In the order of the help.
constexpr CommandMaker commandTable[] = {
    make<ListCommand>,    make<LoadCommand>,    make<ClearCommand>,    make<UndoCommand>,
    make<HistoryCommand>, make<InspectCommand>, make<AuditionCommand>, make<PrepareCommand>,
    make<BlendCommand>,   make<SetCommand>,     make<PresetCommand>,   make<DoctorCommand>,
};

/// Turns a standard output that cannot be written (a full disk) into a failure.
ExitStatus flushOutput(ExitStatus status) {
    if (std::cout.flush())
        return status;
    complain("standard output cannot be written");
    return status == ExitStatus::done ? ExitStatus::wrongUsage : status;
}

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    openStandardStreams();
    prepareStreams();
    Arguments program({.name = "cabslotctl",
                       .version = CABSLOT_VERSION,
                       .description = description,
                       .footer = std::string(pedalHelp) + footer});
    CommonOptions options;
    addCommonOptions(program, options);
    const Commands commands = commandsOf(commandTable, program, options);
    if (const auto status = program.parse(argc, argv))
        return static_cast<int>(flushOutput(static_cast<ExitStatus>(*status)));
    catchInterrupts();
    try {
        return static_cast<int>(flushOutput(runGiven(commands)));
    } catch (const std::exception& error) { // out of memory or threads
        complain(error.what());
        return static_cast<int>(ExitStatus::wrongUsage);
    }
}

} // namespace cabslot
