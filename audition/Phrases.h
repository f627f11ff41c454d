// The dry phrases that ship with Cabslot: the one list for the command line, the window and its
// settings. resources/ makes their files; the shells' completions are compared with the help.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace cabslot {

struct ShippedPhrase {
    std::string_view name;  ///< on the command line, in settings, and of its file
    std::string_view title; ///< in the window
};

/// The first one is used unless another is chosen.
inline constexpr std::array<ShippedPhrase, 2> shippedPhrases = {
    {{"clean", "Clean"}, {"driven", "Driven"}}};

inline bool isShippedPhrase(std::string_view name) {
    return std::ranges::find(shippedPhrases, name, &ShippedPhrase::name) != shippedPhrases.end();
}

/// The file of a shipped phrase in the bundle's folder.
inline std::string shippedPhrasePath(const std::string& bundle, std::string_view name) {
    return bundle + "/phrases/" + std::string(name) + ".wav";
}

} // namespace cabslot
