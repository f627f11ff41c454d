// Numbers as text, independent of the desktop's language.
#pragma once

#include <optional>
#include <string>

namespace cabslot {

/// `number` with `decimals` decimals; never "-0".
std::string fixedText(double number, int decimals);

/// Such as "-1.00 dBFS", or "silent".
std::string dbfsText(std::optional<double> level);

/// A fraction, 0 to 1, with its level: such as "12.3 % (-9.1 dB)".
std::string shareText(double share);

/// "1 point", "2 points".
std::string countText(std::size_t count, const std::string& thing);

} // namespace cabslot
