#include "cli/Command.h"

#include "cli/Console.h"

#include <sstream>

namespace cabslot {

namespace {

constexpr double longestWait = 24 * 60 * 60; // seconds

} // namespace

void Command::addFile(const std::string& name, std::string& file, const std::string& description) {
    arguments_.add({.name = name, .help = description, .reader = into(file), .required = true});
}

void Command::addJson(bool& json) {
    arguments_.addFlag("--json", json, "Print JSON instead of lines of text");
}

void Command::addForce(CommonOptions& options) {
    arguments_.addFlag("--force", options.force, "Replace existing files");
}

void Command::addSeconds(const std::string& option, double& seconds,
                         const std::string& description) {
    std::ostringstream help;
    help << description << "; " << seconds << " if not given";
    arguments_.add({.name = option,
                    .help = help.str(),
                    .reader = within(seconds, 0, longestWait),
                    .type = "SECONDS"});
}

void Command::addTimeout(double& seconds) {
    addSeconds("--timeout", seconds, "How long to wait for the pedal's data");
}

ExitStatus refuse(const std::string& file, const std::string& why) {
    complain(file + ": " + why);
    return ExitStatus::fileRefused;
}

} // namespace cabslot
