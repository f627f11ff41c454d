// Paths as text. Cabslot holds every path as a UTF-8 std::string on every system. Conversion to and
// from std::filesystem::path happens only here, because the standard library does not treat narrow
// text as UTF-8 everywhere. Any thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace cabslot {

std::filesystem::path pathOf(std::string_view text);
std::string textOf(const std::filesystem::path& path);

/// The part after the last separator; the whole path if there is none.
std::string_view lastPart(std::string_view path);

} // namespace cabslot
