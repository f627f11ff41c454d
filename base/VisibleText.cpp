#include "base/VisibleText.h"

namespace cabslot {

namespace {

/// The length of the control character at the start of `text`; 0 if there is none.
std::size_t controlLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x20 || byte(0) == 0x7F)
        return 1;
    const bool c1 = byte(0) == 0xC2 && text.size() > 1 && byte(1) < 0xA0; // two bytes in UTF-8
    return c1 ? 2 : 0;
}

} // namespace

std::string visibleText(std::string_view text) {
    std::string visible;
    while (!text.empty()) {
        const std::size_t control = controlLength(text);
        visible += control > 0 ? '?' : text.front();
        text.remove_prefix(control > 0 ? control : 1);
    }
    return visible;
}

} // namespace cabslot
