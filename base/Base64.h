// Base64 with the usual alphabet and "=" at the end (RFC 4648), without line breaks.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

std::string base64(std::span<const std::uint8_t> bytes);

/// The bytes in `text`; nothing unless it is what base64() writes for them.
std::optional<std::vector<std::uint8_t>> fromBase64(std::string_view text);

} // namespace cabslot
