// The base of cabslotctl's commands. A command's constructor adds it to the command line; run() is
// called if the user gave it. The table of commands is in CommandLine.cpp.
#pragma once

#include "arguments/Arguments.h"
#include "cli/CommonOptions.h"
#include "cli/ExitStatus.h"

#include <string>

namespace cabslot {

class Command {
public:
    virtual ~Command() = default;

    /// Does the work. Results go to standard output, error messages to standard error.
    virtual ExitStatus run() = 0;

    bool given() const { return arguments_.given(); }

protected:
    /// `parent` keeps the command's arguments and must outlive this object.
    Command(Arguments& parent, const std::string& name, const std::string& description)
        : arguments_(parent.addCommand(name, description)) {}

    Arguments& arguments() { return arguments_; }

    /// A required file; `name` is how the help shows it.
    void addFile(const std::string& name, std::string& file, const std::string& description);
    void addJson(bool& json);
    /// For a command that writes files; the flag of the same name before the command means the
    /// same.
    void addForce(CommonOptions& options);
    /// A time, 0 to 24 hours; the help shows the current value of `seconds` as the default.
    void addSeconds(const std::string& option, double& seconds, const std::string& description);
    /// How long to wait for the pedal's names and flags.
    void addTimeout(double& seconds);

private:
    Arguments& arguments_;
};

/// Reports why a file cannot be used and returns the status for that.
ExitStatus refuse(const std::string& file, const std::string& why);

} // namespace cabslot
