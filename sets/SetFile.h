// Reads and writes the files of sets, NAME.cabset; docs/sets.md describes them. Any thread.
#pragma once

#include "sets/SlotSet.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cabslot {

inline constexpr std::string_view setExtension = ".cabset";
inline constexpr int setVersion = 1; ///< no other is read

/// Bytes of a file, of which a set needs some 20000; a longer one is refused by its size.
inline constexpr std::uint32_t longestSetFile = 256 * 1024;

/// Whether the file's name ends with ".cabset", in any case.
bool isSetName(std::string_view path);

/// The file's content.
std::string setText(const SlotSet& set);

struct ReadSet {
    SlotSet set{};
    std::string whyRefused{}; ///< a clause to print after the path and a colon; empty: it was read

    explicit operator bool() const { return whyRefused.empty(); }
};

/// The set in a file's content. Everything is checked: a set that is not refused can be loaded.
ReadSet setIn(std::string_view text);

/// The set in the file at `path`, of which at most longestSetFile bytes are read.
ReadSet readSet(const std::string& path);

} // namespace cabslot
