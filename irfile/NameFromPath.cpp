#include "irfile/NameFromPath.h"

#include "base/PathText.h"

#include <algorithm>
#include <array>

namespace cabslot {

namespace {

constexpr std::string_view wavExtension = ".wav"; // lower case only

constexpr bool isPlain(char character) {
    return character >= 0x20 && character <= 0x7E;
}

constexpr unsigned byteOf(char character) {
    return static_cast<unsigned char>(character);
}

struct Utf8Character {
    char32_t code = 0;
    std::size_t length = 0; ///< bytes; 0: not valid UTF-8
};

constexpr std::size_t utf8Length(unsigned lead) {
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4) // continuation bytes, and leads of over-long or too large codes
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// The character at the start of `text`, which is not empty.
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

/// False for characters that would garble a message: controls, blanks, direction marks, tags.
bool isVisible(char32_t code) {
    struct Range {
        char32_t first, last;
    };
    constexpr std::array<Range, 9> invisible = {{{0x00, 0x20},
                                                 {0x7F, 0xA0},
                                                 {0xAD, 0xAD},
                                                 {0x061C, 0x061C},
                                                 {0x2000, 0x200F},
                                                 {0x2028, 0x202F},
                                                 {0x205F, 0x206F},
                                                 {0xFE00, 0xFEFF},
                                                 {0xE0000, 0x10FFFF}}};
    return std::none_of(invisible.begin(), invisible.end(), [code](const Range& range) {
        return code >= range.first && code <= range.last;
    });
}

constexpr bool isCombining(char32_t code) {
    return code >= 0x0300 && code <= 0x036F;
}

/// The character at `position` in a form that can be shown; empty if it cannot be shown.
std::string_view showable(std::string_view name, std::size_t position) {
    const Utf8Character character = firstCharacter(name.substr(position));
    if (character.length == 0 || !isVisible(character.code))
        return {};
    // A combining accent (macOS stores them so) is shown on its letter.
    const std::size_t before = isCombining(character.code) && position > 0 ? 1 : 0;
    return name.substr(position - before, character.length + before);
}

} // namespace

std::string_view irNameFromPath(std::string_view path) {
    const std::string_view file = lastPart(path);
    const std::size_t first = file.find(wavExtension);
    const std::size_t last = file.rfind(wavExtension);
    if (first == last) // the only one, or none
        return file.substr(0, first);
    // With two or more, the name keeps its extension: "a.wav.wav" gives "a.wav.wav". Kept, so that
    // a file has the same name in every version.
    return file.substr(0, last + wavExtension.size());
}

std::string whyNameRefused(std::string_view name) {
    const auto odd = std::find_if_not(name.begin(), name.end(), isPlain);
    if (odd == name.end())
        return {};
    const std::string_view shown = showable(name, static_cast<std::size_t>(odd - name.begin()));
    std::string why = "its name holds ";
    if (shown.empty())
        why += "a character that";
    else
        why.append("\"").append(shown).append("\", which");
    return why += " the pedal cannot show; use plain letters, digits and signs"
                  " (rename it, for example without accents)";
}

bool isWavName(std::string_view path) {
    if (path.size() < wavExtension.size())
        return false;
    return std::ranges::equal(
        wavExtension, path.substr(path.size() - wavExtension.size()), [](char wanted, char letter) {
            return letter == wanted ||
                   (letter >= 'A' && letter <= 'Z' && letter - 'A' + 'a' == wanted);
        });
}

} // namespace cabslot
