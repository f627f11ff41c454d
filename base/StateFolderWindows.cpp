// base/StateFolder.h on Windows: application data that does not roam to other computers.
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
