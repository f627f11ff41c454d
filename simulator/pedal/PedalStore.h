// The pedal's memory: four user slots, kept in a folder or only while the object lives.
//
// Used only by the thread that serves the pedal's hosts.
#pragma once

#include "simulator/pedal/SlotFile.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace cabslot::simulator {

class PedalStore {
public:
    /// A new pedal, kept in memory only: names "User 1" to "User 4", factory IRs, silent blocks.
    explicit PedalStore() : PedalStore(slotNamePrefix) {}

    /// The same with other names: `namePrefix` (at most 15 characters) and the slot's number.
    explicit PedalStore(std::string_view namePrefix);

    /// A pedal kept in `folder`, in the files user1.slot to user4.slot. Creates the folder and its
    /// parents if necessary; a slot without a file is like a new pedal's. Nothing, with the reason
    /// in `why`, if the folder cannot be used or a file in it is not a slot file.
    static std::optional<PedalStore> open(const std::filesystem::path& folder, std::string& why);

    /// `index` is 0 to 3.
    const PedalSlot& slot(std::size_t index) const { return slots_[index]; }

    /// Puts `content` into the slot and, with a folder, into its file. False, with the reason in
    /// `why`, if it cannot be saved; the slot is then unchanged.
    bool store(std::size_t index, const PedalSlot& content, std::string& why);

    /// Every slot holds a factory IR.
    bool allFactory() const;

private:
    std::filesystem::path fileOf(std::size_t index) const;
    bool load(std::string& why);

    std::array<PedalSlot, slotCount> slots_;
    std::filesystem::path folder_; // empty: memory only
};

} // namespace cabslot::simulator
