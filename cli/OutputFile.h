// Writes whole output files, never half-written ones.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// Replaces the file at `path` atomically, or leaves it unchanged and sets `why`. An existing path
/// that is not a regular file (a pipe, /dev/stdout) is written to directly.
bool writeOutputFile(const std::string& path, std::span<const std::uint8_t> bytes,
                     std::string& why);

} // namespace cabslot
