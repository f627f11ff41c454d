#include "cli/Document.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>

namespace cabslot {

void printDocument(const Json& fields) {
    Json document = {{"version", jsonVersion}};
    document.addAll(fields);
    std::cout << documentText(document) << '\n';
}

Json levelJson(std::optional<double> level) {
    return level ? Json(std::round(*level * 100) / 100) : Json();
}

Json findingsJson(const std::vector<Finding>& findings) {
    Json::List list;
    for (const Finding& finding : findings)
        list.push_back({{"kind", nameOf(finding.kind)}, {"text", finding.text}});
    return list;
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
