// JSON documents on standard output.
#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <string>

namespace cabslot {

/// The document's text. Bytes that are no UTF-8, as in an odd file name, are replaced.
std::string documentText(const nlohmann::ordered_json& document);
void printDocument(const nlohmann::ordered_json& document);

/// A time in ISO 8601, UTC, such as "2026-05-03T18:30:00Z".
std::string isoTime(std::chrono::sys_seconds time);

} // namespace cabslot
