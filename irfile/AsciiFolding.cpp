#include "irfile/AsciiFolding.h"

#include "irfile/Utf8.h"

#include <algorithm>
#include <array>

namespace cabslot {

namespace {

/// Consecutive characters with one ASCII letter each; a blank stands for none.
struct Letters {
    char32_t first;
    std::string_view ascii;
};

// The base letters of Unicode's compatibility decomposition, and the usual ones where it has none.
constexpr std::array<Letters, 6> rows = {{
    {0x00C0, "AAAAAA CEEEEIIIIDNOOOOOxOUUUUY  aaaaaa ceeeeiiiidnooooo-ouuuuy y"},
    {0x0100, "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi  JjKkkLlLlLlL"
             "lLlNnNnNnnNnOoOoOo  RrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs"},
    {0x0200, "AaAaEeEeIiIiOoOoRrRrUuUuSsTt  Hh"},
    {0x0391, "ABGDEZITIKLMNXOPR STYFCPOIYaeiiyabgdezitiklmnxoprsstyfcpoiyoyo"},
    {0x1E00, "AaBbBbBbCcDdDdDdDdDdEeEeEeEeEeFfGgHhHhHhHhHhIiIiKkKkKkLlLlLlLlMm"
             "MmMmNnNnNnNnOoOoOoOoPpPpRrRrRrRrSsSsSsSsSsTtTtTtTtUuUuUuUuUuVvVv"
             "WwWwWwWwWwXxXxYyZzZzZzhtwy sS   AaAaAaAaAaAaAaAaAaAaAaAaEeEeEeEe"
             "EeEeEeEeIiIiOoOoOoOoOoOoOoOoOoOoOoOoUuUuUuUuUuUuUuYyYyYyYy"},
    {0xFF01, "!\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
             "abcdefghijklmnopqrstuvwxyz{|}~"},
}};

struct Spelling {
    char32_t code;
    std::string_view ascii;
};

constexpr std::array<Spelling, 24> spellings = {{
    {0xB2, "2"},  {0xB3, "3"},   {0xB9, "1"},   {0xC6, "AE"},  {0xDE, "Th"},  {0xDF, "ss"},
    {0xE6, "ae"}, {0xFE, "th"},  {0x132, "IJ"}, {0x133, "ij"}, {0x152, "OE"}, {0x153, "oe"},
    {0x401, "E"}, {0x404, "Ye"}, {0x406, "I"},  {0x407, "Yi"}, {0x451, "e"},  {0x454, "ye"},
    {0x456, "i"}, {0x457, "yi"}, {0x2010, "-"}, {0x2013, "-"}, {0x2014, "-"}, {0x2019, "'"},
}};

// Capital A to small ya, in the usual spelling; the hard and the soft sign have none.
constexpr char32_t firstCyrillic = 0x410;
constexpr std::array<std::string_view, 64> cyrillic = {
    "A", "B", "V", "G", "D", "E",  "Zh", "Z",  "I",  "Y",    "K", "L", "M", "N", "O",  "P",
    "R", "S", "T", "U", "F", "Kh", "Ts", "Ch", "Sh", "Shch", "",  "Y", "",  "E", "Yu", "Ya",
    "a", "b", "v", "g", "d", "e",  "zh", "z",  "i",  "y",    "k", "l", "m", "n", "o",  "p",
    "r", "s", "t", "u", "f", "kh", "ts", "ch", "sh", "shch", "",  "y", "",  "e", "yu", "ya"};

std::string_view asciiFor(char32_t code) {
    if (code >= firstCyrillic && code - firstCyrillic < cyrillic.size())
        return cyrillic[code - firstCyrillic];
    const auto spelling = std::ranges::find(spellings, code, &Spelling::code);
    if (spelling != spellings.end())
        return spelling->ascii;
    for (const auto& [first, ascii] : rows) {
        if (code >= first && code - first < ascii.size())
            return ascii.substr(code - first, 1);
    }
    return isCombining(code) ? "" : " ";
}

} // namespace

std::string asciiText(std::string_view text) {
    std::string ascii;
    while (!text.empty()) {
        const Utf8Character character = firstCharacter(text);
        if (character.code >= 0x20 && character.code < 0x7F)
            ascii += static_cast<char>(character.code);
        else
            ascii += asciiFor(character.code);
        text.remove_prefix(std::max<std::size_t>(character.length, 1));
    }
    return ascii;
}

} // namespace cabslot
