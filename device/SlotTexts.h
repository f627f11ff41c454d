// Up to four short texts, one per slot, that two threads may read and write.
#pragma once

#include "base/Pedal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>

namespace cabslot {

/// A growing array of UTF-8 texts with its own lock: readers get copies, writers replace whole
/// entries and allocate nothing. It holds up to four texts of up to 16 characters each.
class SlotTexts {
public:
    static constexpr std::size_t maxCharacters = slotNameSize;

    void clear();

    std::size_t count() const;

    /// The text at `index`, which must be below count(): anything else aborts the process.
    std::string at(std::size_t index) const;

    /// The texts of all four slots, which must be there: fewer abort the process.
    std::array<std::string, slotCount> all() const;

    /// Sets the text at `index` to `codes`, each byte being the code of one character (0 to 255).
    /// `index` may be count(), which appends; a larger one, or one above 3, aborts the process.
    /// Codes after the sixteenth are ignored.
    void setCharacters(std::size_t index, std::span<const std::uint8_t> codes);

    /// The same for a name field: 0 bytes in it are left out. Other padding stays.
    void setName(std::size_t index, std::span<const std::uint8_t> field);

private:
    struct Text {
        std::array<char, 2 * maxCharacters> utf8; // a code above 127 takes two bytes
        std::size_t size = 0;
    };

    mutable std::mutex mutex_;
    std::array<Text, slotCount> texts_{};
    std::size_t count_ = 0;
};

} // namespace cabslot
