// The names of the pedal's own IRs.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace cabslot {

inline constexpr std::size_t factoryNameCount = 30;
inline constexpr std::size_t factoryNameSize = 15; ///< characters of every name, spaces included

/// Names of the factory IRs, by the index that a factory IR file carries. A row is exactly what the
/// pedal shows: ten characters of cabinet, five of speakers.
extern const std::array<std::string_view, factoryNameCount> FileNameBuff;

} // namespace cabslot
