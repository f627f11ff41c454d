#include "memory/SlotRecord.h"

#include "base/PathText.h"
#include "irfile/NameField.h"

#include <filesystem>
#include <utility>

namespace cabslot {

SlotRecord recordOf(IR sent, std::string replaced) {
    SlotRecord record{.ir = std::move(sent), .replaced = withoutBlanksAtEnd(std::move(replaced))};
    std::error_code unknown;
    std::string& source = record.ir.source;
    if (!source.empty())
        source = textOf(std::filesystem::absolute(pathOf(source), unknown).lexically_normal());
    record.time = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return record;
}

bool isSameContent(const IR& one, const IR& other) {
    return one.block == other.block && one.name == other.name && one.factory == other.factory;
}

} // namespace cabslot
