#include "memory/SlotRecord.h"

#include "base/PathText.h"
#include "irfile/NameField.h"

#include <filesystem>
#include <string_view>
#include <utility>

namespace cabslot {

namespace {

/// An absolute path of another system, as in a set that was made there.
bool isForeign(std::string_view path) {
    const bool named = path.starts_with('/') || path.starts_with("\\\\") ||
                       (path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/'));
    return named && !pathOf(path).is_absolute();
}

} // namespace

SlotRecord recordOf(IR sent, std::string replaced) {
    SlotRecord record{.ir = std::move(sent), .replaced = withoutBlanksAtEnd(std::move(replaced))};
    std::error_code unknown;
    std::string& source = record.ir.source;
    if (!source.empty() && !isForeign(source))
        source = textOf(std::filesystem::absolute(pathOf(source), unknown).lexically_normal());
    record.time = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return record;
}

bool isSameContent(const IR& one, const IR& other) {
    return one.block == other.block && one.name == other.name && one.factory == other.factory;
}

} // namespace cabslot
