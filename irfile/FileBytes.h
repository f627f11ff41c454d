// A file's bytes in memory.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace cabslot {

struct FileBytes {
    std::unique_ptr<std::uint8_t[]> bytes; ///< null: the file could not be read
    std::uint32_t size = 0;                ///< how many
    bool whole = false;                    ///< these are all bytes of the file
    std::string whyNot; ///< why `bytes` is null, in words for the user, without the path
};

inline constexpr std::uint32_t wholeFile = std::numeric_limits<std::uint32_t>::max();

/// Reads the first `most` bytes, or all, of a regular file of less than 4 GiB. Anything else (a
/// folder, a pipe, a device) is refused without waiting for it. A file that shrinks meanwhile is
/// refused, of one that grows the part that was there at the start is taken.
FileBytes readFile(const std::string& path, std::uint32_t most);

} // namespace cabslot
