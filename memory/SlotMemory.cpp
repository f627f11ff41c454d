#include "memory/SlotMemory.h"

#include "base/Files.h"
#include "base/Fnv1a.h"
#include "base/PathText.h"
#include "base/StateFolder.h"
#include "device/SharedState.h"
#include "memory/SlotRecordFile.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr const char* folderVariable = "CABSLOT_STATE"; // names the folder itself
constexpr std::string_view socketPrefix = "unix:";

std::string withoutBlanksAtEnd(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string memoryFolder() {
    const char* const own = std::getenv(folderVariable);
    if (own != nullptr && *own != '\0')
        return own;
    const std::string state = userStateFolder();
    return state.empty() ? state : textOf(pathOf(state) / "cabslot" / "memory");
}

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

} // namespace

SlotRecord recordOfUpload(std::uint32_t slot, const std::string& file) {
    SlotRecord record;
    record.block = irdatabuff;
    record.name = withoutBlanksAtEnd(IRNameArr.at(slot - 1));
    std::error_code unknown;
    if (!file.empty())
        record.source = textOf(fs::absolute(pathOf(file), unknown).lexically_normal());
    record.time = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return record;
}

SlotMemory::SlotMemory(const std::string& pedal, Complain complain)
    : pedal_(uniquePedalName(pedal)), folder_(memoryFolder()), complain_(std::move(complain)) {}

std::string SlotMemory::recordPathOf(std::uint32_t slot) const {
    return textOf(pathOf(folder_) / (fileNameOf(pedal_) + "-slot" + std::to_string(slot)));
}

void SlotMemory::remember(std::uint32_t slot, const SlotRecord& record) {
    if (folder_.empty())
        return;
    std::string why = makeFolder(folder_);
    if (why.empty())
        why = replaceFile(recordPathOf(slot), recordFile(pedal_, record), FileAccess::ownerOnly);
    if (!why.empty())
        complain_("what was loaded cannot be remembered: " + recordPathOf(slot) +
                  " cannot be written: " + why);
}

std::optional<SlotRecord> SlotMemory::recall(std::uint32_t slot, const std::string& nameFromPedal) {
    const std::string path = recordPathOf(slot);
    std::error_code unknown;
    if (folder_.empty() || !fs::exists(pathOf(path), unknown))
        return {};
    const FileBytes file = readFile(path, longestRecordFile);
    std::optional<SlotRecord> record;
    if (file.bytes)
        record = readRecordFile(file.span(), pedal_);
    if (record)
        return record->name == withoutBlanksAtEnd(nameFromPedal) ? record : std::nullopt;
    if (!std::exchange(damageTold_.at(slot - 1), true))
        complain_("what was loaded into slot " + std::to_string(slot) + " is not remembered: " +
                  path + ": " + (file.bytes ? "it is damaged" : file.whyNot));
    return {};
}

} // namespace cabslot
