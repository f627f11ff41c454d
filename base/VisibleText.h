// Makes text from outside (file names, the pedal's names) safe to show.
#pragma once

#include <string>
#include <string_view>

namespace cabslot {

/// Returns `text` (UTF-8) with each control character (C0, DEL or C1) replaced by "?". A terminal
/// would obey control characters, and a window shows nothing for them.
std::string visibleText(std::string_view text);

} // namespace cabslot
