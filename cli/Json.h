// JSON documents on standard output.
#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <string>

namespace cabslot {

/// The version of the layout of every document, its first field. Adding fields does not change it;
/// removing one or changing its meaning does.
inline constexpr int jsonVersion = 1;

/// Formats a part of a document. Replaces bytes that are not UTF-8, as in some file names.
std::string documentText(const nlohmann::ordered_json& part);
void printDocument(const nlohmann::ordered_json& fields); ///< prints the version, then the fields

/// A time in ISO 8601, UTC, such as "2026-05-03T18:30:00Z".
std::string isoTime(std::chrono::sys_seconds time);

} // namespace cabslot
