#include "base/VisibleText.h"

#include <algorithm>
#include <cstddef>

namespace cabslot {

namespace {

std::size_t lengthByFirstByte(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first < 0xC2 || first > 0xF4) // continues a character, or begins none
        return 0;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// The bytes of the character at the start of `text`; 0 if it is not UTF-8.
std::size_t characterLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = lengthByFirstByte(byte(0));
    if (length == 0 || length > text.size())
        return 0;
    const auto continues = [](char part) {
        return (static_cast<unsigned char>(part) & 0xC0) == 0x80;
    };
    if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length),
                     continues))
        return 0;
    const bool overlong =
        (byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xF0 && byte(1) < 0x90);
    const bool surrogate = byte(0) == 0xED && byte(1) > 0x9F;
    const bool tooLarge = byte(0) == 0xF4 && byte(1) > 0x8F;
    return overlong || surrogate || tooLarge ? 0 : length;
}

bool isControl(std::string_view character) {
    const auto byte = static_cast<unsigned char>(character[0]);
    if (character.size() == 1)
        return byte < 0x20 || byte == 0x7F;
    return byte == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0; // C1
}

} // namespace

std::string visibleText(std::string_view text) {
    std::string visible;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0 || isControl(character))
            visible += '?';
        else
            visible += character;
        text.remove_prefix(character.size());
    }
    return visible;
}

} // namespace cabslot
