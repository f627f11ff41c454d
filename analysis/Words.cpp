#include "analysis/Words.h"

#include <array>
#include <charconv>
#include <cmath>

namespace cabslot {

namespace {

constexpr double leastShownShare = 0.00001;

} // namespace

std::string fixedText(double number, int decimals) {
    std::array<char, 400> text{}; // the greatest double has 309 digits
    const auto end =
        std::to_chars(text.begin(), text.end(), number, std::chars_format::fixed, decimals).ptr;
    const std::string shown(text.begin(), end);
    const bool nothing = shown.find_first_not_of("-0.") == std::string::npos;
    return nothing && shown.front() == '-' ? shown.substr(1) : shown;
}

std::string dbfsText(std::optional<double> level) {
    return level ? fixedText(*level, 2) + " dBFS" : "silent";
}

std::string shareText(double share) {
    const std::string level = " (" + fixedText(10 * std::log10(share), 1) + " dB)";
    if (share < leastShownShare)
        return "less than 0.001 %" + level;
    return fixedText(share * 100, share < 0.001 ? 3 : 1) + " %" + level;
}

std::string countText(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace cabslot
