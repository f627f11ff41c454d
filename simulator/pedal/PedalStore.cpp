#include "simulator/pedal/PedalStore.h"

#include "base/PathText.h"

#include <algorithm>
#include <system_error>

namespace cabslot::simulator {

PedalStore::PedalStore(std::string_view namePrefix) {
    for (std::size_t i = 0; i < slotCount; ++i) {
        std::string name = std::string(namePrefix) + std::to_string(i + 1);
        name.resize(slotNameSize, ' ');
        std::copy(name.begin(), name.end(), slots_[i].name.begin());
    }
}

std::optional<PedalStore> PedalStore::open(const std::filesystem::path& folder, std::string& why) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error && !std::filesystem::is_directory(folder, error))
        error = std::make_error_code(std::errc::not_a_directory);
    if (error) {
        why = "cannot make the folder " + textOf(folder) + ": " + error.message();
        return std::nullopt;
    }
    PedalStore store;
    store.folder_ = folder;
    if (!store.load(why))
        return std::nullopt;
    return store;
}

bool PedalStore::load(std::string& why) {
    for (std::size_t i = 0; i < slotCount; ++i) {
        std::error_code error;
        const auto type = std::filesystem::symlink_status(fileOf(i), error).type();
        if (type != std::filesystem::file_type::not_found &&
            !readSlotFile(fileOf(i), slots_[i], why))
            return false;
    }
    return true;
}

bool PedalStore::store(std::size_t index, const PedalSlot& content, std::string& why) {
    if (!folder_.empty() && !writeSlotFile(fileOf(index), content, why))
        return false;
    slots_[index] = content;
    return true;
}

bool PedalStore::allFactory() const {
    return std::all_of(slots_.begin(), slots_.end(), [](const auto& slot) { return slot.factory; });
}

std::filesystem::path PedalStore::fileOf(std::size_t index) const {
    return folder_ / ("user" + std::to_string(index + 1) + ".slot");
}

} // namespace cabslot::simulator
