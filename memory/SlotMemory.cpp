#include "memory/SlotMemory.h"

#include "base/Files.h"
#include "base/Fnv1a.h"
#include "base/PathText.h"
#include "base/StateFolder.h"
#include "irfile/NameField.h"
#include "memory/SlotRecordFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr const char* folderVariable = "CABSLOT_STATE"; // names the folder itself
constexpr std::string_view socketPrefix = "unix:";

/// One name for the pedal, independent of the working folder.
std::string uniquePedalName(const std::string& pedal) {
    if (!pedal.starts_with(socketPrefix))
        return pedal;
    std::error_code unknown;
    const fs::path path = fs::absolute(pathOf(pedal.substr(socketPrefix.size())), unknown);
    return std::string(socketPrefix) + textOf(path.lexically_normal());
}

/// The start of the pedal's file names: a socket's path may contain anything and be long.
std::string fileNameOf(const std::string& pedal) {
    if (!pedal.starts_with(socketPrefix))
        return pedal;
    const std::uint64_t hash =
        fnv1a({reinterpret_cast<const std::uint8_t*>(pedal.data()), pedal.size()});
    return "unix-" + std::to_string(hash);
}

/// Creates the folder, accessible only to its owner, unless it exists; returns why that failed.
std::string makeFolder(const std::string& folder) {
    std::error_code error;
    const fs::path path = pathOf(folder);
    if (fs::is_directory(path, error))
        return {};
    fs::create_directories(path, error);
    if (!error)
        fs::permissions(path, fs::perms::owner_all, error);
    return error ? error.message() : std::string();
}

void remove(const EntryFile& file) {
    std::error_code ignored; // another program may have removed it
    fs::remove(pathOf(file.path), ignored);
}

} // namespace

std::string memoryFolder() {
    const char* const own = std::getenv(folderVariable);
    if (own != nullptr && *own != '\0')
        return own;
    const std::string state = userStateFolder();
    return state.empty() ? state : textOf(pathOf(state) / "cabslot" / "memory");
}

SlotMemory::SlotMemory(const std::string& pedal, Complain complain)
    : pedal_(uniquePedalName(pedal)), folder_(memoryFolder()), complain_(std::move(complain)) {}

std::string SlotMemory::stemOf(std::uint32_t slot) const {
    return fileNameOf(pedal_) + "-slot" + std::to_string(slot);
}

void SlotMemory::remember(std::uint32_t slot, const SlotRecord& record) {
    if (folder_.empty())
        return;
    SlotRecord newest = record;
    const std::vector<EntryFile> files = entryFiles(folder_, stemOf(slot));
    std::vector<EntryFile> outdated;
    std::size_t kept = 1;
    for (const EntryFile& file : files) {
        const auto old = read(file);
        const bool same = old && isSameContent(old->ir, record.ir);
        // Loaded again over itself: an undo still leads to what was there before both.
        if (same && &file == &files.front() && nameText(old->ir.name) == record.replaced)
            newest.replaced = old->replaced;
        if (same || ++kept > contentsKept)
            outdated.push_back(file);
    }
    if (const std::string why = write(slot, newest, files); !why.empty())
        return complain_("what was loaded cannot be remembered: " + why);
    std::ranges::for_each(outdated, remove);
}

/// Returns why that failed, or an empty text.
std::string SlotMemory::write(std::uint32_t slot, const SlotRecord& record,
                              std::span<const EntryFile> existing) const {
    const std::vector<std::uint8_t> bytes = recordFile(pedal_, record);
    const std::string path = newEntryPath(folder_, stemOf(slot), existing, bytes);
    std::string why = makeFolder(folder_);
    if (why.empty())
        why = replaceFile(path, bytes, FileAccess::ownerOnly);
    return why.empty() ? why : path + " cannot be written: " + why;
}

std::optional<SlotRecord> SlotMemory::read(const EntryFile& file) const {
    const FileBytes bytes = readFile(file.path, longestRecordFile);
    return bytes.bytes ? readRecordFile(bytes.span(), pedal_) : std::nullopt;
}

std::optional<SlotRecord> SlotMemory::readOrReport(std::uint32_t slot, const EntryFile& file) {
    auto record = read(file);
    std::error_code unknown;
    const bool removed = !record && !fs::exists(pathOf(file.path), unknown); // by another program
    if (!record && !removed && !std::exchange(damageReported_.at(slot - 1), true)) {
        const std::string why = readFile(file.path, longestRecordFile).whyNot;
        complain_("what was loaded into slot " + std::to_string(slot) + " is not remembered: " +
                  file.path + ": " + (why.empty() ? "it is damaged" : why));
    }
    return record;
}

/// The first record with this name, at or behind unconfirmed ones: what the slot holds if the pedal
/// shows that name. A damaged record may be what it holds, so the search ends there.
std::optional<SlotRecord> SlotMemory::firstNamed(std::uint32_t slot,
                                                 std::span<const EntryFile> files,
                                                 const std::string& name) {
    for (const EntryFile& file : files) {
        auto record = readOrReport(slot, file);
        if (record && nameText(record->ir.name) == name)
            return record;
        if (!record || record->confirmed)
            break;
    }
    return {};
}

std::optional<SlotRecord> SlotMemory::recall(std::uint32_t slot, const std::string& nameFromPedal) {
    return firstNamed(slot, entryFiles(folder_, stemOf(slot)), withoutBlanksAtEnd(nameFromPedal));
}

std::vector<SlotRecord> SlotMemory::history(std::uint32_t slot) {
    std::vector<SlotRecord> records;
    for (const EntryFile& file : entryFiles(folder_, stemOf(slot))) {
        if (auto record = readOrReport(slot, file); record && records.size() < contentsKept)
            records.push_back(*std::move(record));
    }
    return records;
}

std::optional<SlotRecord> SlotMemory::undoTarget(std::uint32_t slot,
                                                 const std::string& nameFromPedal) {
    const std::vector<EntryFile> files = entryFiles(folder_, stemOf(slot));
    const auto newest = files.empty() ? std::nullopt : readOrReport(slot, files.front());
    if (!newest)
        return {};
    const std::string name = withoutBlanksAtEnd(nameFromPedal);
    const bool mayHaveFailed = !newest->confirmed && newest->replaced == name;
    if (nameText(newest->ir.name) != name && !mayHaveFailed)
        return {};
    return firstNamed(slot, std::span(files).subspan(1), newest->replaced);
}

} // namespace cabslot
