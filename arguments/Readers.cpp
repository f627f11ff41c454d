#include "arguments/Readers.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <utility>

namespace cabslot {

namespace {

template<typename Number>
std::optional<Number> wholeTextAs(const std::string& text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

template<typename Number>
Reader numberWithin(Number& value, Number lowest, Number highest) {
    return [&value, lowest, highest](const std::string& text) {
        const auto number = wholeTextAs<Number>(text);
        if (number && *number >= lowest && *number <= highest) { // which NaN is not
            value = *number;
            return std::string();
        }
        std::ostringstream why;
        why << text << " is not a number from " << lowest << " to " << highest;
        return why.str();
    };
}

std::string listOf(const std::vector<std::string>& choices) {
    std::string list;
    for (const std::string& choice : choices)
        list += (list.empty() ? "" : ", ") + choice;
    return list;
}

} // namespace

Reader into(std::string& value, Check check) {
    return [&value, check = std::move(check)](const std::string& text) {
        std::string why = check ? check(text) : std::string();
        if (why.empty())
            value = text;
        return why;
    };
}

Reader into(std::optional<std::string>& value) {
    return [&value](const std::string& text) {
        value = text;
        return std::string();
    };
}

Reader into(std::vector<std::string>& values) {
    return [&values](const std::string& text) {
        values.push_back(text);
        return std::string();
    };
}

Reader oneOf(std::string& value, std::vector<std::string> choices) {
    return into(value, [choices = std::move(choices)](const std::string& text) {
        const bool known = std::ranges::find(choices, text) != choices.end();
        return known ? std::string() : text + " is none of " + listOf(choices);
    });
}

Reader within(double& value, double lowest, double highest) {
    return numberWithin(value, lowest, highest);
}

Reader within(std::uint32_t& value, std::uint32_t lowest, std::uint32_t highest) {
    return numberWithin(value, lowest, highest);
}

std::optional<double> numberIn(const std::string& text) {
    return wholeTextAs<double>(text);
}

} // namespace cabslot
