// Letters of ASCII in lower case, for names that differ in nothing else.
#pragma once

#include <algorithm>
#include <string>

namespace cabslot {

constexpr char lowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

inline std::string inLowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), lowerCase);
    return text;
}

} // namespace cabslot
