#include "cli/HistoryCommand.h"

#include "base/VisibleText.h"
#include "cli/Console.h"
#include "cli/Document.h"
#include "cli/SlotNumbers.h"
#include "irfile/NameField.h"
#include "memory/SlotMemory.h"

#include <ctime>
#include <iomanip>
#include <iostream>
#include <numeric>

namespace cabslot {

namespace {

Json jsonOf(const SlotRecord& record) {
    return {{"name", nameText(record.ir.name)},
            {"source", record.isClear() ? Json() : Json(record.ir.source)},
            {"time", isoTime(record.time)},
            {"factory", record.ir.factory},
            {"confirmed", record.confirmed},
            {"findings", findingsJson(record.findings)}};
}

void printLine(const SlotRecord& record) {
    constexpr int longestName = 15;
    const std::time_t time = std::chrono::system_clock::to_time_t(record.time);
    std::cout << "  " << std::put_time(std::localtime(&time), "%Y-%m-%d %H:%M") << "  " << std::left
              << std::setw(longestName) << shownName(nameText(record.ir.name)) << "  "
              << (record.isClear() ? "cleared" : visibleText(record.ir.source))
              << (record.confirmed ? "" : " (not confirmed by the pedal)") << '\n';
}

} // namespace

HistoryCommand::HistoryCommand(Arguments& program, CommonOptions& options)
    : Command(program, "history",
              "Show what this computer loaded into the slots, newest first; needs no pedal"),
      options_(options) {
    arguments().add({.name = "SLOT",
                     .help = "The user slot, " + slotNumbers() + "; all if not given",
                     .reader = into(slot_, whyNoSlot)});
    addJson(json_);
}

std::vector<std::uint32_t> HistoryCommand::slots() const {
    if (!slot_.empty())
        return {slotOf(slot_)};
    std::vector<std::uint32_t> all(slotCount);
    std::iota(all.begin(), all.end(), 1U);
    return all;
}

ExitStatus HistoryCommand::run() {
    SlotMemory memory(options_.pedal, complain);
    Json::List documents;
    for (const std::uint32_t slot : slots()) {
        const std::vector<SlotRecord> records = memory.history(slot);
        Json::List contents;
        if (!json_)
            std::cout << defaultSlotName(slot) << (records.empty() ? ": nothing\n" : ":\n");
        for (const SlotRecord& record : records) {
            if (json_)
                contents.push_back(jsonOf(record));
            else
                printLine(record);
        }
        documents.push_back({{"slot", slot}, {"contents", contents}});
    }
    if (json_)
        printDocument({{"slots", documents}});
    return ExitStatus::done;
}

} // namespace cabslot
