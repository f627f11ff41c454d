// JSON documents on standard output.
#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <string>

namespace cabslot {

/// The version of every document's layout, its first field. Fields may be added; one that goes or
/// changes its meaning raises it.
inline constexpr int jsonVersion = 1;

/// The text of a document's part. Bytes that are no UTF-8, as in an odd file name, are replaced.
std::string documentText(const nlohmann::ordered_json& part);
void printDocument(const nlohmann::ordered_json& fields); ///< behind the version

/// A time in ISO 8601, UTC, such as "2026-05-03T18:30:00Z".
std::string isoTime(std::chrono::sys_seconds time);

} // namespace cabslot
