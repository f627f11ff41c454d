// The name of a temporary file that will replace another one.
#pragma once

#include <array>
#include <cstdio>
#include <random>
#include <string>

namespace cabslot {

/// ".cabslot-" and 16 random digits: nobody can take all the names in advance.
inline std::string temporaryName() {
    std::random_device random;
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), ".cabslot-%08x%08x", random(), random());
    return name.data();
}

} // namespace cabslot
