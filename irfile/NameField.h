// The field that carries a slot's name to the pedal, and the name that it shows.
#pragma once

#include "irfile/IR.h"

#include <string>
#include <string_view>

namespace cabslot {

inline constexpr std::size_t wavNameSize = 10; ///< characters of a file's name that are sent

/// The field for the name of an open file: its characters (up to 15), blanks, and a 0 byte after
/// the tenth character unless the name is longer.
NameField nameFieldOf(std::string_view name);

/// The field for a slot's default name: its characters (up to 15), then blanks only.
NameField paddedNameField(std::string_view name);

/// The characters of `field`, UTF-8, with its blanks: 0 bytes are not shown.
std::string textOf(const NameField& field);

/// The same without the blanks at its end.
std::string nameText(const NameField& field);

std::string withoutBlanksAtEnd(std::string text);

} // namespace cabslot
