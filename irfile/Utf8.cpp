#include "irfile/Utf8.h"

#include <array>

namespace cabslot {

namespace {

constexpr unsigned byteOf(char character) {
    return static_cast<unsigned char>(character);
}

constexpr std::size_t utf8Length(unsigned lead) {
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4) // continuation bytes, and leads of over-long or too large codes
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

} // namespace

Utf8Character firstCharacter(std::string_view text) {
    const unsigned lead = byteOf(text.front());
    const std::size_t length = utf8Length(lead);
    if (length == 0 || length > text.size())
        return {};
    char32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (const char next : text.substr(1, length - 1)) {
        if ((byteOf(next) & 0xC0) != 0x80)
            return {};
        code = code << 6 | (byteOf(next) & 0x3F);
    }
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < smallest[length] || code > 0x10FFFF || surrogate)
        return {};
    return {code, length};
}

} // namespace cabslot
