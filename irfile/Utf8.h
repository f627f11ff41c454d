// UTF-8, character by character.
#pragma once

#include <cstddef>
#include <string_view>

namespace cabslot {

struct Utf8Character {
    char32_t code = 0;
    std::size_t length = 0; ///< bytes; 0: not valid UTF-8
};

/// The character at the start of `text`, which is not empty.
Utf8Character firstCharacter(std::string_view text);

/// An accent that belongs to the letter before it (macOS stores names so).
constexpr bool isCombining(char32_t code) {
    return code >= 0x0300 && code <= 0x036F;
}

} // namespace cabslot
