// Makes text from outside (file names, the pedal's names) safe to show.
#pragma once

#include <string>
#include <string_view>

namespace cabslot {

/// Returns `text` (UTF-8) with each control character (C0, DEL or C1) and each byte that is not
/// UTF-8 replaced by "?". A terminal would obey them, and a window shows nothing for them. Every
/// program passes what it shows through this, if any of it came from outside.
std::string visibleText(std::string_view text);

} // namespace cabslot
