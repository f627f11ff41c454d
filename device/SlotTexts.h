// An array of up to four short texts, one a slot, that two threads may read and write.
#pragma once

#include "base/Pedal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <string>

namespace cabslot {

/// A growing array of UTF-8 texts with a lock inside: readers get copies, writers replace whole
/// entries and allocate nothing. It holds up to four texts of up to 16 characters each.
class SlotTexts {
public:
    static constexpr std::size_t maxCharacters = slotNameSize;

    void clear();

    std::size_t count() const;

    /// The text at `index`; `index` must be below count(), anything else stops the process.
    std::string at(std::size_t index) const;

    /// Makes `codes`, each byte taken as the character of that code (0 to 255), the text at
    /// `index`. `index` may be count(), which appends; a larger one, or one above 3, stops the
    /// process. Codes beyond the sixteenth are left out.
    void setCharacters(std::size_t index, std::span<const std::uint8_t> codes);

    /// The same for a name field: a 0 byte in it shows nothing. Other padding stays.
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
