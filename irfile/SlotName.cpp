#include "irfile/SlotName.h"

#include "base/PathText.h"
#include "irfile/AsciiFolding.h"
#include "irfile/NameField.h"
#include "irfile/NameFromPath.h"

#include <algorithm>
#include <numeric>

namespace cabslot {

namespace {

using Words = std::vector<std::string>;

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool isSmall(char character) {
    return character >= 'a' && character <= 'z';
}

constexpr bool isLetter(char character) {
    return isSmall(character) || (character >= 'A' && character <= 'Z');
}

bool hasDigit(std::string_view word) {
    return std::ranges::any_of(word, isDigit);
}

bool contains(std::span<const std::string> texts, std::string_view text) {
    return std::ranges::find(texts, text) != texts.end();
}

/// The words of a file's name without its extension: runs of letters and digits.
Words wordsOf(std::string_view path) {
    constexpr std::size_t extension = 4;
    const std::string_view file = lastPart(path);
    Words words;
    bool inWord = false;
    for (const char character :
         asciiText(file.substr(0, file.size() - (isWavName(file) ? extension : 0)))) {
        const bool belongs = isLetter(character) || isDigit(character);
        if (belongs && !inWord)
            words.emplace_back();
        if (belongs)
            words.back() += character;
        inWord = belongs;
    }
    return words;
}

/// Without the words that all of its kin have, too: neighbours with the same first word. All words
/// if that would leave none.
Words distinguishingWords(std::string_view path, std::span<const std::string> neighbours) {
    const Words words = wordsOf(path);
    std::vector<Words> kin;
    for (const std::string& neighbour : neighbours) {
        Words others = wordsOf(neighbour);
        if (!words.empty() && !others.empty() && others.front() == words.front() && others != words)
            kin.push_back(std::move(others));
    }
    Words kept;
    std::ranges::copy_if(words, std::back_inserter(kept), [&](const std::string& word) {
        return kin.empty() || !std::ranges::all_of(
                                  kin, [&](const Words& others) { return contains(others, word); });
    });
    return kept.empty() ? words : kept;
}

std::string joined(const Words& words) {
    return std::accumulate(words.begin(), words.end(), std::string());
}

/// With blanks between the words if they fit.
std::string spaced(const Words& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

/// Shortens words without digits to their first letter, the last word first, until all fit.
void shorten(Words& words) {
    std::size_t size = joined(words).size();
    for (auto word = words.rbegin(); word != words.rend() && size > wavNameSize; ++word) {
        if (hasDigit(*word))
            continue;
        const std::size_t cut = std::min(word->size() - 1, size - wavNameSize);
        word->resize(word->size() - cut);
        size -= cut;
    }
}

/// Up to ten characters. Of words that do not fit even when shortened, the start and a number at
/// the end are kept.
std::string shortened(Words words) {
    if (std::string text = spaced(words); text.size() <= wavNameSize)
        return text;
    for (std::string& word : words) {
        if (isSmall(word.front()))
            word.front() = static_cast<char>(word.front() - 'a' + 'A');
    }
    shorten(words);
    std::string text = joined(words);
    if (text.size() <= wavNameSize)
        return text;
    const std::string number = isDigit(text.back()) ? words.back() : std::string();
    const std::size_t end = std::min(number.size(), wavNameSize / 2);
    return text.substr(0, wavNameSize - end) + number.substr(number.size() - end);
}

/// `name`, or if it is taken, its start with the first number that makes it unique: "Deep2", but
/// "4x12-2", or it would read as another number.
std::string unique(const std::string& name, std::span<const std::string> taken) {
    std::string candidate = name;
    for (int number = 2; contains(taken, candidate); ++number) {
        const std::string end = (isDigit(name.back()) ? "-" : "") + std::to_string(number);
        std::string start = name;
        if (start.size() + end.size() > wavNameSize)
            std::erase(start, ' ');
        candidate = start.substr(0, wavNameSize - end.size()) + end;
    }
    return candidate;
}

} // namespace

std::string checkSlotName(std::string_view name) {
    if (name.find_first_not_of(' ') == std::string_view::npos)
        return "it is empty";
    if (std::string why = whyNameRefused(name); !why.empty())
        return "it holds a character that the pedal cannot show; use plain letters, digits and "
               "signs";
    if (name.size() > wavNameSize)
        return "it has " + std::to_string(name.size()) + " characters; the pedal shows up to " +
               std::to_string(wavNameSize);
    return {};
}

std::string ruleName(std::string_view path) {
    return withoutBlanksAtEnd(std::string(irNameFromPath(path).substr(0, wavNameSize)));
}

NameProblem nameProblem(std::string_view path, std::span<const std::string> taken) {
    if (!whyNameRefused(irNameFromPath(path)).empty())
        return NameProblem::refused;
    return contains(taken, ruleName(path)) ? NameProblem::taken : NameProblem::none;
}

std::string proposedName(std::string_view path, std::span<const std::string> neighbours,
                         std::span<const std::string> taken) {
    const Words words = distinguishingWords(path, neighbours);
    return words.empty() ? std::string() : unique(shortened(words), taken);
}

std::vector<std::string> namesApart(std::span<const std::string> paths,
                                    std::span<const std::string> neighbours,
                                    std::span<const std::string> taken) {
    std::vector<std::string> names;
    std::ranges::transform(paths, std::back_inserter(names), ruleName);
    const std::vector<std::string> byRule = names;
    std::vector<std::string> used(taken.begin(), taken.end());
    used.insert(used.end(), byRule.begin(), byRule.end());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (std::ranges::count(byRule, byRule[i]) < 2)
            continue;
        if (std::string name = proposedName(paths[i], neighbours, used); !name.empty())
            used.push_back(names[i] = std::move(name));
    }
    return names;
}

} // namespace cabslot
