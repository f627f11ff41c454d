#include "cli/CommandLine.h"

#include "arguments/Arguments.h"
#include "cli/AuditionCommand.h"
#include "cli/ClearCommand.h"
#include "cli/Console.h"
#include "cli/DoctorCommand.h"
#include "cli/InspectCommand.h"
#include "cli/ListCommand.h"
#include "cli/LoadCommand.h"
#include "cli/PrepareCommand.h"
#include "cli/PresetCommand.h"
#include "cli/Terminal.h"
#include "platform/PedalChoice.h"

#include <iostream>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace cabslot {

namespace {

constexpr const char* description =
    "Load guitar-cabinet impulse responses into the four user slots of the pedal.";

constexpr const char* footer = R"(Exit status:
  0    done, and confirmed by the pedal
  1    a file was refused
  2    wrong usage, an output file cannot be written, or no sound device
  3    no pedal, or it was lost
  4    the pedal did not answer or confirm in time
  130  interrupted

Examples:
  cabslotctl list
  cabslotctl load 2 "Vintage 4x12.wav"
  cabslotctl load 1 Clean.wav 2 Crunch.wav 3 Lead.wav
  cabslotctl clear 2
  cabslotctl inspect Cab.wav --json
  cabslotctl inspect --recursive Pack
  cabslotctl inspect Cab.wav --plot Cab.svg
  cabslotctl audition Cab.wav --dry driven
  cabslotctl prepare Cab.wav Better.wav --level -18
  cabslotctl preset show Live.preset
  cabslotctl doctor)";

void addPedalOptions(Arguments& program, PedalOptions& pedal) {
    pedal.pedal = defaultPedal;
    program.add({.name = "--pedal",
                 .help = "The pedal to use: usb, sim or unix:PATH; usb if not given",
                 .reader = into(pedal.pedal, whatIsWrongWithPedal),
                 .type = "PEDAL",
                 .variable = pedalVariable});
    program.add({.name = "--trace",
                 .help = "Write every report to this file, for a bug report",
                 .reader = into(pedal.traceFile),
                 .type = "FILE"});
}

using CommandMaker = std::unique_ptr<Command> (*)(Arguments& program, PedalOptions& pedal);

template<typename T>
std::unique_ptr<Command> make(Arguments& program, PedalOptions& pedal) {
    if constexpr (std::is_constructible_v<T, Arguments&, PedalOptions&>)
        return std::make_unique<T>(program, pedal);
    else
        return std::make_unique<T>(program); // it needs no pedal
}

// In the order of the help.
constexpr CommandMaker commandTable[] = {
    make<ListCommand>,     make<LoadCommand>,    make<ClearCommand>,  make<InspectCommand>,
    make<AuditionCommand>, make<PrepareCommand>, make<PresetCommand>, make<DoctorCommand>,
};

ExitStatus runGiven(const std::vector<std::unique_ptr<Command>>& commands) {
    for (const auto& command : commands) {
        if (command->given())
            return command->run();
    }
    return ExitStatus::wrongUsage; // not reached: the parser requires a command
}

/// Turns a standard output that cannot be written (a full disk) into a failure.
ExitStatus flushOutput(ExitStatus status) {
    if (std::cout.flush())
        return status;
    complain("standard output cannot be written");
    return status == ExitStatus::done ? ExitStatus::wrongUsage : status;
}

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    prepareStreams();
    Arguments program({.name = "cabslotctl",
                       .version = CABSLOT_VERSION,
                       .description = description,
                       .footer = std::string(pedalHelp) + footer});
    PedalOptions pedal;
    addPedalOptions(program, pedal);
    std::vector<std::unique_ptr<Command>> commands;
    for (const CommandMaker makeCommand : commandTable)
        commands.push_back(makeCommand(program, pedal));
    if (const auto status = program.parse(argc, argv))
        return static_cast<int>(flushOutput(static_cast<ExitStatus>(*status)));
    catchInterrupts();
    return static_cast<int>(flushOutput(runGiven(commands)));
}

} // namespace cabslot
