#include "cli/CommandLine.h"

#include "cli/AuditionCommand.h"
#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/DoctorCommand.h"
#include "cli/PresetCommand.h"
#include "platform/PedalChoice.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace cabslot {

namespace {

constexpr const char* description =
    "Load guitar-cabinet impulse responses into the four user slots of the pedal.";

constexpr const char* footer = R"(Exit status:
  0    done, and confirmed by the pedal
  1    the file was refused
  2    wrong usage, an output file cannot be written, or no sound device
  3    no pedal, or it was lost
  4    the pedal did not answer or confirm in time
  130  interrupted

Examples:
  cabslotctl list
  cabslotctl load 2 "Room 4x12.wav"
  cabslotctl clear 2
  cabslotctl inspect Cab.wav --json
  cabslotctl inspect Cab.wav --plot Cab.svg
  cabslotctl audition Cab.wav --dry driven
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

template<typename T>
std::unique_ptr<Command> make(CLI::App& app, PedalOptions& pedal) {
    if constexpr (std::is_constructible_v<T, CLI::App&, PedalOptions&>)
        return std::make_unique<T>(app, pedal);
    else
        return std::make_unique<T>(app);
}

struct KnownCommand {
    std::string_view name;
    std::unique_ptr<Command> (*make)(CLI::App& app, PedalOptions& pedal);
};

constexpr KnownCommand knownCommands[] = {
    {"list", make<ListCommand>},         {"load", make<LoadCommand>},
    {"clear", make<ClearCommand>},       {"inspect", make<InspectCommand>},
    {"audition", make<AuditionCommand>}, {"preset", make<PresetCommand>},
    {"doctor", make<DoctorCommand>},
};

// The command that `first` names alone, if it names one: to put all of them together takes longer
// than most of them do.
std::vector<std::unique_ptr<Command>> makeCommands(std::string_view first, CLI::App& app,
                                                   PedalOptions& pedal) {
    const bool isName = std::ranges::count(knownCommands, first, &KnownCommand::name) > 0;
    std::vector<std::unique_ptr<Command>> commands;
    for (const KnownCommand& known : knownCommands) {
        if (!isName || known.name == first)
            commands.push_back(known.make(app, pedal));
    }
    return commands;
}

ExitStatus runGiven(const std::vector<std::unique_ptr<Command>>& commands) {
    for (const auto& command : commands) {
        if (command->given())
            return command->run();
    }
    return ExitStatus::wrongUsage; // not reached: a command is required
}

// A full disk must not look like success.
ExitStatus flushOutput(ExitStatus status) {
    if (std::cout.flush())
        return status;
    complain("standard output cannot be written");
    return status == ExitStatus::done ? ExitStatus::wrongUsage : status;
}

} // namespace

int runCommandLine(int argc, const char* const* argv) {
    CLI::App app(description, "cabslotctl");
    app.set_version_flag("--version", "cabslotctl " CABSLOT_VERSION, "Show the version and end");
    app.set_help_flag("-h,--help", "Show this help and end; also behind a command");
    app.footer(std::string(pedalHelp) + footer);
    app.require_subcommand(1);
    app.fallthrough(); // --pedal may stand behind the command, too

    PedalOptions pedal;
    addPedalOptions(app, pedal);
    const auto commands = makeCommands(argc > 1 ? argv[1] : "", app, pedal);

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& wrong) {
        complain(std::string(wrong.what()) + " (cabslotctl --help shows what is right)");
        return static_cast<int>(ExitStatus::wrongUsage);
    }
    catchInterrupts();
    return static_cast<int>(flushOutput(runGiven(commands)));
}

} // namespace cabslot
