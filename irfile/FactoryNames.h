// The names of the pedal's factory IRs.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace cabslot {

inline constexpr std::size_t factoryNameCount = 30;
inline constexpr std::size_t factoryNameSize = 15; ///< characters of every name, spaces included

/// The factory IRs' names, indexed by the number in a factory IR file. Each is exactly what the
/// pedal shows: ten characters for the cabinet, five for the speakers.
extern const std::array<std::string_view, factoryNameCount> FileNameBuff;

} // namespace cabslot
