#include "cli/CommandLine.h"

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

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

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

void addPedalOptions(CLI::App& app, PedalOptions& pedal) {
    pedal.pedal = defaultPedal;
    app.add_option("--pedal", pedal.pedal,
                   "The pedal to use: usb, sim or unix:PATH; usb if not given")
        ->envname(pedalVariable)
        ->check(whatIsWrongWithPedal)
        ->type_name("PEDAL");
    app.add_option("--trace", pedal.traceFile, "Write every report to this file, for a bug report")
        ->type_name("FILE");
}

using CommandMaker = std::unique_ptr<Command> (*)(CLI::App& app, PedalOptions& pedal);

template<typename T>
std::unique_ptr<Command> make(CLI::App& app, PedalOptions& pedal) {
    if constexpr (std::is_constructible_v<T, CLI::App&, PedalOptions&>)
        return std::make_unique<T>(app, pedal);
    else
        return std::make_unique<T>(app); // it needs no pedal
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
    CLI::App app(description, "cabslotctl");
    app.set_version_flag("--version", "cabslotctl " CABSLOT_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help message and exit");
    app.footer(std::string(pedalHelp) + footer);
    app.require_subcommand(1);
    app.fallthrough(); // --pedal may also follow the command

    PedalOptions pedal;
    addPedalOptions(app, pedal);
    std::vector<std::unique_ptr<Command>> commands;
    for (const CommandMaker makeCommand : commandTable)
        commands.push_back(makeCommand(app, pedal));

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& wrong) {
        complain(std::string(wrong.what()) + " (see cabslotctl --help)");
        return static_cast<int>(ExitStatus::wrongUsage);
    }
    catchInterrupts();
    return static_cast<int>(flushOutput(runGiven(commands)));
}

} // namespace cabslot
