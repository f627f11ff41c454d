// Tables of commands: cabslotctl's own, and those of a command that has commands.
#pragma once

#include "cli/Command.h"

#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace cabslot {

using Commands = std::vector<std::unique_ptr<Command>>;
using CommandMaker = std::unique_ptr<Command> (*)(Arguments& parent, CommonOptions& options);

/// Makes a command; some need no common options.
template<typename T>
std::unique_ptr<Command> make(Arguments& parent, CommonOptions& options) {
    if constexpr (std::is_constructible_v<T, Arguments&, CommonOptions&>)
        return std::make_unique<T>(parent, options);
    else
        return std::make_unique<T>(parent);
}

/// The commands of a table, in the order of the help.
Commands commandsOf(std::span<const CommandMaker> table, Arguments& parent, CommonOptions& options);

/// Runs the one that the user gave; the parser requires one.
ExitStatus runGiven(const Commands& commands);

/// A command that only has commands.
class CommandGroup : public Command {
public:
    ExitStatus run() override { return runGiven(commands_); }

protected:
    CommandGroup(Arguments& parent, CommonOptions& options, const std::string& name,
                 const std::string& description, std::span<const CommandMaker> table);

private:
    Commands commands_;
};

} // namespace cabslot
