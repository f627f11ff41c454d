#include "cli/Command.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <sstream>

namespace cabslot {

namespace {

constexpr double longestWait = 24 * 60 * 60; // seconds

} // namespace

void Command::addFile(const std::string& name, std::string& file, const std::string& description) {
    subcommand().add_option(name, file, description)->required()->type_name("");
}

void Command::addJson(bool& json) {
    subcommand().add_flag("--json", json, "Print JSON instead of lines of text");
}

void Command::addSeconds(const std::string& option, double& seconds,
                         const std::string& description) {
    std::ostringstream help;
    help << description << "; " << seconds << " if not given";
    subcommand()
        .add_option(option, seconds, help.str())
        ->check(CLI::Range(0.0, longestWait).description(""))
        ->type_name("SECONDS");
}

void Command::addTimeout(double& seconds) {
    addSeconds("--timeout", seconds, "How long to wait for the pedal's data");
}

} // namespace cabslot
