// Names for slots beyond the one that a file's name gives by rule: typed by the user, or proposed
// where the rule's name would be refused or is that of another slot.
//
// Pure functions of their arguments; any thread. Names are without the blanks that pad them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

/// Why `name` cannot be given to a slot, as a clause for the user; empty if it can: one to ten
/// characters of printable ASCII, at least one of them no blank. nameFieldOf() makes its field.
std::string checkSlotName(std::string_view name);

/// The name that the rule gives to the WAV file `path`: the start of its file name.
std::string ruleName(std::string_view path);

enum class NameProblem {
    none,
    refused, ///< the rule's name holds a character that the pedal cannot show
    taken,   ///< another slot has that name
};

/// What is wrong with the rule's name for the WAV file `path`. `taken` are the other slots' names.
NameProblem nameProblem(std::string_view path, std::span<const std::string> taken);

/// A name of up to ten characters for the WAV file `path`, which is not in `taken`: the words of
/// its file name that distinguish it from `neighbours` (the names of files beside it, in any
/// order), shortened. "Acme 4x12 SM57 Cap Edge 01" among its kin gives "SM57CapE01". Empty if the
/// file name has no letter or digit that ASCII can express.
std::string proposedName(std::string_view path, std::span<const std::string> neighbours,
                         std::span<const std::string> taken);

/// The names for WAV files that are loaded together: the rule's, or for those whose rule's names
/// would be equal, proposals that differ from each other and from `taken`.
std::vector<std::string> namesApart(std::span<const std::string> paths,
                                    std::span<const std::string> neighbours,
                                    std::span<const std::string> taken);

} // namespace cabslot
