#include "cli/Commands.h"

#include <algorithm>

namespace cabslot {

Commands commandsOf(std::span<const CommandMaker> table, Arguments& parent,
                    CommonOptions& options) {
    Commands commands;
    for (const CommandMaker makeCommand : table)
        commands.push_back(makeCommand(parent, options));
    return commands;
}

ExitStatus runGiven(const Commands& commands) {
    const auto given =
        std::ranges::find_if(commands, [](const auto& command) { return command->given(); });
    return given == commands.end() ? ExitStatus::wrongUsage : (*given)->run();
}

CommandGroup::CommandGroup(Arguments& parent, CommonOptions& options, const std::string& name,
                           const std::string& description, std::span<const CommandMaker> table)
    : Command(parent, name, description), commands_(commandsOf(table, arguments(), options)) {}

} // namespace cabslot
