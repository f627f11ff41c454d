#include "sets/SlotSet.h"

#include "base/LowerCase.h"
#include "irfile/NameField.h"
#include "irfile/SlotName.h"
#include "irfile/WavBytes.h"
#include "memory/SlotMemory.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace cabslot {

namespace {

constexpr std::string_view extension = ".wav";

/// Without what a file's name must not hold on some system, and without a leading dot, which hides
/// a file.
std::string allowed(std::string name) {
    std::ranges::replace_if(
        name, [](char c) { return std::string_view("<>:\"/\\|?*").find(c) != std::string::npos; },
        '-');
    if (name.starts_with('.'))
        name.front() = '-';
    return name;
}

/// A name that is not in `taken`, which holds names in lower case. Only a file's first ten
/// characters reach the pedal, so what is appended behind them changes no slot's name.
std::string fileName(const std::string& slotName, std::uint32_t slot,
                     const std::set<std::string>& taken) {
    const std::string number = "slot " + std::to_string(slot);
    std::string name = slotName.empty() ? number : allowed(slotName);
    if (taken.contains(inLowerCase(name))) {
        name.resize(std::max(name.size(), wavNameSize), ' ');
        name += " " + number;
    }
    return name + std::string(extension);
}

} // namespace

SlotSet rememberedSet(SlotMemory& memory, const std::array<std::string, slotCount>& names) {
    SlotSet set;
    for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
        if (const auto record = memory.recall(slot, names.at(slot - 1)))
            set.at(slot - 1) = record->ir;
    }
    return set;
}

std::vector<ExportedIR> exported(const SlotSet& set) {
    std::vector<ExportedIR> all;
    std::set<std::string> taken;
    for (std::uint32_t slot = 1; slot <= slotCount; ++slot) {
        const auto& ir = set.at(slot - 1);
        if (!ir)
            continue;
        const std::string name = nameText(ir->name);
        std::string file = fileName(name, slot, taken);
        taken.insert(inLowerCase(file.substr(0, file.size() - extension.size())));
        const bool keepsName = !ir->factory && ruleName(file) == name;
        all.push_back({slot, std::move(file), keepsName, wavBytes(ir->block)});
    }
    return all;
}

} // namespace cabslot
