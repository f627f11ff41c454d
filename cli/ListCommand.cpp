#include "cli/ListCommand.h"

#include "cli/Console.h"
#include "cli/Document.h"
#include "device/SharedState.h"
#include "irfile/NameField.h"
#include "memory/SlotMemory.h"

#include <iostream>

namespace cabslot {

namespace {

Json rememberedJson(SlotMemory& memory, std::uint32_t slot) {
    const auto record = memory.recall(slot, IRNameArr.at(slot - 1));
    if (!record)
        return {};
    return {{"name", nameText(record->ir.name)},
            {"source", record->isClear() ? Json() : Json(record->ir.source)},
            {"time", isoTime(record->time)},
            {"confirmed", record->confirmed}};
}

void printJson(SlotMemory memory) {
    Json::List slots;
    for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
        slots.push_back({{"slot", slot},
                         {"name", IRNameArr.at(slot - 1)},
                         {"factory", isInternalIRArray[slot - 1] == 1},
                         {"remembered", rememberedJson(memory, slot)}});
    }
    printDocument({{"slots", slots}});
}

void printLines() {
    for (std::size_t i = 0; i < slotCount; ++i)
        std::cout << defaultSlotName(i + 1) << ": " << shownName(IRNameArr.at(i)) << '\n';
}

} // namespace

ListCommand::ListCommand(Arguments& program, CommonOptions& options)
    : Command(program, "list", "Show the names of the four user slots"), options_(options) {
    addJson(json_);
    addTimeout(options.timeout);
}

ExitStatus ListCommand::run() {
    PedalSession session(options_);
    if (const ExitStatus connected = session.connect(); connected != ExitStatus::done)
        return connected;
    json_ ? printJson(SlotMemory(options_.pedal, complain)) : printLines();
    return ExitStatus::done;
}

} // namespace cabslot
