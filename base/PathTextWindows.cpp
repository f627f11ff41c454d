// base/PathText.h on Windows, where paths are UTF-16.
#include "base/PathText.h"

namespace cabslot {

std::filesystem::path pathOf(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string_view lastPart(std::string_view path) {
    return path.substr(path.find_last_of("/\\:") + 1); // npos + 1 is 0
}

} // namespace cabslot
