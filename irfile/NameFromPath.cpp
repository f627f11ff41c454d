#include "irfile/NameFromPath.h"

#include "base/LowerCase.h"
#include "base/PathText.h"
#include "irfile/Utf8.h"

#include <algorithm>
#include <array>

namespace cabslot {

namespace {

constexpr std::string_view wavExtension = ".wav"; // lower case only

constexpr bool isPlain(char character) {
    return character >= 0x20 && character <= 0x7E;
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
    return path.size() >= wavExtension.size() &&
           std::ranges::equal(path.substr(path.size() - wavExtension.size()), wavExtension, {},
                              lowerCase);
}

} // namespace cabslot
