#include "ui/Arguments.h"

#include "arguments/Arguments.h"
#include "platform/PedalChoice.h"

namespace cabslot {

namespace {

constexpr const char* description =
    "Load guitar-cabinet impulse responses into the four user slots of the pedal.";

constexpr const char* footer = R"(Exit status:
  0    the window was closed, or the user has confirmed that the pedal is gone
  1    there is no display
  2    wrong usage

Examples:
  cabslot
  cabslot Band.cabset
  cabslot --pedal sim
  cabslot --pedal unix:/tmp/pedal.sock)";

} // namespace

std::optional<int> readArguments(int argc, const char* const* argv, WindowArguments& arguments) {
    Arguments program({.name = "cabslot",
                       .version = CABSLOT_VERSION,
                       .description = description,
                       .footer = std::string(pedalHelp) + footer});
    arguments.pedal = defaultPedal;
    program.add({.name = "--pedal",
                 .help = "The pedal to use: usb, sim or unix:PATH; usb if not given",
                 .reader = into(arguments.pedal, whatIsWrongWithPedal),
                 .type = "PEDAL",
                 .variable = pedalVariable});
    program.add({.name = "SET",
                 .help = "A set, *.cabset: asks whether to load it",
                 .reader = into(arguments.set)});
    return program.parse(argc, argv);
}

} // namespace cabslot
