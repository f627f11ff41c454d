#include "cli/ListCommand.h"

#include "cli/Console.h"
#include "device/SharedState.h"

#include <nlohmann/json.hpp>

#include <iostream>

namespace cabslot {

namespace {

void printJson() {
    nlohmann::ordered_json slots = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < slotCount; ++i) {
        slots.push_back(
            {{"slot", i + 1}, {"name", IRNameArr.at(i)}, {"factory", isInternalIRArray[i] == 1}});
    }
    std::cout << nlohmann::ordered_json{{"version", 1}, {"slots", slots}}.dump(2) << '\n';
}

void printLines() {
    for (std::size_t i = 0; i < slotCount; ++i)
        std::cout << defaultSlotName(i + 1) << ": " << shownName(IRNameArr.at(i)) << '\n';
}

} // namespace

ListCommand::ListCommand(CLI::App& app, PedalOptions& pedal)
    : Command(app, "list", "Show the names of the four user slots"), pedal_(pedal) {
    addJson(json_);
    addTimeout(pedal.timeout);
}

ExitStatus ListCommand::run() {
    PedalSession session(pedal_);
    if (const ExitStatus connected = session.connect(); connected != ExitStatus::done)
        return connected;
    json_ ? printJson() : printLines();
    return ExitStatus::done;
}

} // namespace cabslot
