#include "memory/EntryFiles.h"

#include "base/Fnv1a.h"
#include "base/PathText.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

/// The number in what follows the stem in a file's name: "-17-1234", or nothing at all.
std::optional<std::uint64_t> numberIn(std::string_view rest) {
    if (rest.empty())
        return 0;
    std::uint64_t number = 0;
    const char* const end = rest.data() + rest.size();
    const auto parsed = std::from_chars(rest.data() + 1, end, number);
    const bool valid =
        rest.front() == '-' && parsed.ec == std::errc() && parsed.ptr != end && *parsed.ptr == '-';
    return valid ? std::optional(number) : std::nullopt;
}

} // namespace

std::vector<EntryFile> entryFiles(const std::string& folder, std::string_view stem) {
    std::vector<EntryFile> files;
    std::error_code error;
    for (fs::directory_iterator file(pathOf(folder), error), end; !error && file != end;
         file.increment(error)) {
        const std::string name = textOf(file->path().filename());
        if (!name.starts_with(stem))
            continue;
        if (const auto number = numberIn(std::string_view(name).substr(stem.size())))
            files.push_back({*number, textOf(file->path())});
    }
    std::ranges::sort(files, [](const EntryFile& one, const EntryFile& other) {
        return std::tie(other.number, other.path) < std::tie(one.number, one.path);
    });
    return files;
}

std::string newEntryPath(const std::string& folder, std::string_view stem,
                         std::span<const EntryFile> existing, std::span<const std::uint8_t> bytes) {
    const std::uint64_t number = existing.empty() ? 1 : existing.front().number + 1;
    return textOf(pathOf(folder) / (std::string(stem) + '-' + std::to_string(number) + '-' +
                                    std::to_string(fnv1a(bytes))));
}

} // namespace cabslot
