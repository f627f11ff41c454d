// Reads the values of arguments: converts a text, checks it and stores the result.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

/// Returns what is wrong with a value, as a sentence without its end, or an empty text.
using Check = std::function<std::string(const std::string& text)>;

/// A Check that also stores a valid value, in a variable that must outlive it.
using Reader = Check;

Reader into(std::string& value, Check check = {});
Reader into(std::optional<std::string>& value); ///< distinguishes an empty text from none
Reader into(std::vector<std::string>& values);  ///< appends
Reader oneOf(std::string& value, std::vector<std::string> choices);

/// A number from `lowest` to `highest`; no infinity, and not NaN.
Reader within(double& value, double lowest, double highest);
Reader within(std::uint32_t& value, std::uint32_t lowest, std::uint32_t highest);

/// The number that `text` is as a whole, finite or not; nothing if it is none.
std::optional<double> numberIn(const std::string& text);

} // namespace cabslot
