// Text from outside (file names, the pedal's names) made safe to show.
#pragma once

#include <string>
#include <string_view>

namespace cabslot {

/// `text` (UTF-8) with each control character, C0, DEL or C1, as one visible sign, "?". A terminal
/// obeys control characters, and a window shows nothing for them.
std::string visibleText(std::string_view text);

} // namespace cabslot
