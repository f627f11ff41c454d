#include "cli/SetShow.h"

#include "analysis/Findings.h"
#include "analysis/Words.h"
#include "base/VisibleText.h"
#include "cli/Console.h"
#include "cli/Document.h"
#include "irfile/NameField.h"
#include "sets/SetFile.h"

#include <iomanip>
#include <iostream>

namespace cabslot {

namespace {

Json jsonOf(std::uint32_t slot, const std::optional<IR>& ir) {
    Json json = {{"slot", slot}, {"known", ir.has_value()}};
    if (!ir)
        return json;
    const Samples samples = samplesOf(ir->block);
    json.addAll({{"name", nameText(ir->name)},
                 {"factory", ir->factory},
                 {"source", ir->source.empty() ? Json() : Json(ir->source)},
                 {"peak_dbfs", levelJson(peakDbfs(samples))},
                 {"findings", findingsJson(findingsOf(samples, {}))}});
    return json;
}

void printSlot(std::uint32_t slot, const std::optional<IR>& ir) {
    constexpr int longestName = 15;
    constexpr int longestLevel = 12;
    std::cout << defaultSlotName(slot) << ": ";
    if (!ir) {
        std::cout << "unknown\n";
        return;
    }
    const Samples samples = samplesOf(ir->block);
    std::cout << std::left << std::setw(longestName) << shownName(nameText(ir->name)) << "  "
              << std::setw(longestLevel) << dbfsText(peakDbfs(samples)) << "  "
              << (ir->source.empty() ? "cleared" : visibleText(ir->source)) << '\n';
    if (ir->source.empty())
        return;
    for (const Finding& finding : findingsOf(samples, {}))
        std::cout << "  " << finding.text << '\n';
}

} // namespace

SetShow::SetShow(Arguments& parent)
    : Command(parent, "show", "Show what a set holds for each slot, and any problems") {
    addFile("FILE", file_, "A set, *.cabset");
    addJson(json_);
}

ExitStatus SetShow::run() {
    const ReadSet read = readSet(file_);
    if (!read)
        return refuse(file_, read.whyRefused);
    Json::List slots;
    for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
        if (json_)
            slots.push_back(jsonOf(slot, read.set.at(slot - 1)));
        else
            printSlot(slot, read.set.at(slot - 1));
    }
    if (json_)
        printDocument({{"file", file_}, {"slots", slots}});
    return ExitStatus::done;
}

} // namespace cabslot
