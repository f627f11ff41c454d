// Text in plain ASCII, for names that the pedal can show.
#pragma once

#include <string>
#include <string_view>

namespace cabslot {

/// `text` (UTF-8) with printable ASCII only. Accents are left out ("é" gives "e"), and Latin, Greek
/// and Cyrillic letters become the ASCII letters they are commonly written with ("ß" gives "ss",
/// "Ж" gives "Zh"). What has no such letters becomes a blank.
std::string asciiText(std::string_view text);

} // namespace cabslot
