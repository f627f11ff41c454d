// base/StateFolder.h on Windows: the folder for programs' own data that stays on this computer.
#include "base/StateFolder.h"

#include <cstdlib>

namespace cabslot {

std::string userStateFolder() {
    const char* const local = std::getenv("LOCALAPPDATA");
    return local == nullptr ? std::string() : local;
}

std::string whatNamesStateFolder() {
    return "LOCALAPPDATA";
}

} // namespace cabslot
