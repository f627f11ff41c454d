// Whole files out, without ever leaving a half-written one.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// Replaces the file at `path` by `bytes` in one step, or leaves it as it was and says why. What is
/// there but is no regular file (a pipe, /dev/stdout) is written to directly.
bool writeOutputFile(const std::string& path, std::span<const std::uint8_t> bytes,
                     std::string& why);

} // namespace cabslot
