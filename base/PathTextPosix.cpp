// base/PathText.h on POSIX systems, where paths are bytes.
#include "base/PathText.h"

namespace cabslot {

std::filesystem::path pathOf(std::string_view text) {
    return text;
}

std::string textOf(const std::filesystem::path& path) {
    return path.string();
}

std::string_view lastPart(std::string_view path) {
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

} // namespace cabslot
