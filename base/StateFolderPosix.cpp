#include "base/StateFolder.h"

#include <cstdlib>
#include <filesystem>

namespace cabslot {

std::string userStateFolder() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && std::filesystem::path(state).is_absolute())
        return state;
    const char* const home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        return {};
    return (std::filesystem::path(home) / ".local" / "state").string();
}

std::string whatNamesStateFolder() {
    return "HOME or XDG_STATE_HOME";
}

} // namespace cabslot
