// JSON documents on standard output.
#pragma once

#include "analysis/Findings.h"
#include "json/Json.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

/// The version of the layout of every document, its first field. Adding fields does not change it;
/// removing one or changing its meaning does.
inline constexpr int jsonVersion = 1;

void printDocument(const Json& fields); ///< prints the version, then the fields

Json levelJson(std::optional<double> level); ///< dBFS, two decimals; null if silent
Json findingsJson(const std::vector<Finding>& findings);

/// A time in ISO 8601, UTC, such as "2026-05-03T18:30:00Z".
std::string isoTime(std::chrono::sys_seconds time);

} // namespace cabslot
