#include "ui/Arguments.h"

#include "platform/PedalChoice.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdio>

namespace cabslot {

namespace {

constexpr int wrongUsage = 2;

constexpr const char* description =
    "Load guitar-cabinet impulse responses into the four user slots of the pedal.";

constexpr const char* footer = R"(Exit status:
  0    the window was closed, or the pedal was lost and that was told
  1    there is no display
  2    wrong usage

Examples:
  cabslot
  cabslot --pedal sim
  cabslot --pedal unix:/tmp/pedal.sock)";

} // namespace

std::optional<int> readArguments(int argc, const char* const* argv, std::string& pedal) {
    CLI::App app(description, "cabslot");
    app.set_version_flag("--version", "cabslot " CABSLOT_VERSION, "Show the version and exit");
    app.set_help_flag("-h,--help", "Show this help and exit");
    app.footer(std::string(pedalHelp) + footer);
    pedal = defaultPedal;
    app.add_option("--pedal", pedal, "The pedal to use: usb, sim or unix:PATH; usb if not given")
        ->envname(pedalVariable)
        ->check(whatIsWrongWithPedal)
        ->type_name("PEDAL");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& wrong) {
        std::fprintf(stderr, "cabslot: %s (see cabslot --help)\n", wrong.what());
        return wrongUsage;
    }
    return std::nullopt;
}

} // namespace cabslot
