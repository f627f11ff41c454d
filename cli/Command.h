// The base of cabslotctl's commands. A command adds itself to the command line when it is made and
// runs when it was given. CommandLine.cpp has the table of them.
#pragma once

#include "cli/ExitStatus.h"

#include <CLI/App.hpp>

#include <string>

namespace cabslot {

class Command {
public:
    virtual ~Command() = default;

    /// Does the work. Results go to standard output; what failed is told on standard error.
    virtual ExitStatus run() = 0;

    bool given() const { return subcommand_->parsed(); }

protected:
    /// `app` keeps the subcommand and must outlive this object.
    Command(CLI::App& app, const std::string& name, const std::string& description)
        : subcommand_(app.add_subcommand(name, description)) {
        subcommand_->footer(""); // the program's own is long
    }

    CLI::App& subcommand() { return *subcommand_; }

    /// A file that must be given; `name` is how the help calls it.
    void addFile(const std::string& name, std::string& file, const std::string& description);
    void addJson(bool& json);
    /// A time, 0 to 24 hours; the value that `seconds` has now is told as the default.
    void addSeconds(const std::string& option, double& seconds, const std::string& description);
    /// How long to wait for the pedal's names and flags.
    void addTimeout(double& seconds);

private:
    CLI::App* subcommand_;
};

} // namespace cabslot
