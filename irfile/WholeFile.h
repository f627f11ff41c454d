// A whole file in memory.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace cabslot {

struct WholeFile {
    std::unique_ptr<std::uint8_t[]> bytes; ///< null: the file could not be read
    std::uint32_t size = 0;                ///< bytes
    std::string whyNot; ///< why `bytes` is null, in words for the user, without the path
};

/// Reads a regular file of less than 4 GiB. Anything else (a folder, a pipe, a device) is refused
/// without waiting for it. A file that shrinks meanwhile is refused, of one that grows the part
/// that was there at the start is taken.
WholeFile readWholeFile(const std::string& path);

} // namespace cabslot
