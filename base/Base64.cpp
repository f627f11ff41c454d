#include "base/Base64.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t groupBytes = 3;
constexpr std::size_t groupCharacters = 4;
constexpr unsigned characterBits = 6;

} // namespace

std::string base64(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(groupBytes, bytes.size()))) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < groupBytes; ++i)
            group = group << 8 | (i < bytes.size() ? bytes[i] : 0U);
        for (std::size_t i = 0; i < groupCharacters; ++i)
            text += i > bytes.size() ? '=' : alphabet[group >> characterBits * (3 - i) & 0x3F];
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> fromBase64(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    std::uint32_t bits = 0;
    unsigned count = 0; // of the bits that make no byte yet
    for (const char character : text.substr(0, text.find('='))) {
        const std::size_t value = alphabet.find(character);
        if (value == std::string_view::npos)
            return {};
        bits = bits << characterBits | static_cast<std::uint32_t>(value);
        count += characterBits;
        if (count >= 8) {
            count -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> count));
        }
    }
    if (base64(bytes) != text) // bits left over, or a wrong end
        return {};
    return bytes;
}

} // namespace cabslot
