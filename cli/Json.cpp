#include "cli/Json.h"

#include <array>
#include <cstdio>
#include <iostream>

namespace cabslot {

std::string documentText(const nlohmann::ordered_json& part) {
    constexpr auto replacing = nlohmann::ordered_json::error_handler_t::replace;
    return part.dump(2, ' ', false, replacing);
}

void printDocument(const nlohmann::ordered_json& fields) {
    nlohmann::ordered_json document = {{"version", jsonVersion}};
    document.update(fields);
    std::cout << documentText(document) << '\n';
}

std::string isoTime(std::chrono::sys_seconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text.data();
}

} // namespace cabslot
