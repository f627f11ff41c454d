// Paths as text. Every path that Cabslot holds as a std::string is UTF-8, on every system; a
// std::filesystem::path is made and taken apart only here, as not every system's narrow text is
// UTF-8 to the standard library. Any thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace cabslot {

std::filesystem::path pathOf(std::string_view text);
std::string textOf(const std::filesystem::path& path);

/// The part behind the last separator; all of it when there is none.
std::string_view lastPart(std::string_view path);

} // namespace cabslot
