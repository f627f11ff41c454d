#include "irfile/NameField.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::uint8_t blank = 0x20;

void appendCharacter(std::string& text, std::uint8_t code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(0x80 | (code & 0x3F));
}

} // namespace

NameField nameFieldOf(std::string_view name) {
    NameField field = paddedNameField(name);
    if (name.size() <= wavNameSize)
        field[wavNameSize] = 0;
    return field;
}

NameField paddedNameField(std::string_view name) {
    NameField field{};
    field.fill(blank);
    std::ranges::copy(name.substr(0, field.size()), field.begin());
    return field;
}

std::string textOf(const NameField& field) {
    std::string text;
    for (const std::uint8_t code : field) {
        if (code != 0)
            appendCharacter(text, code);
    }
    return text;
}

std::string nameText(const NameField& field) {
    return withoutBlanksAtEnd(textOf(field));
}

std::string withoutBlanksAtEnd(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace cabslot
