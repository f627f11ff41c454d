// Reads whole files into memory and replaces files atomically. Paths are UTF-8.
//
// Any thread. Failures are returned as text to print after the path and a colon.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>

namespace cabslot {

struct FileBytes {
    std::unique_ptr<std::uint8_t[]> bytes; ///< null: the file could not be read
    std::uint32_t size = 0;                ///< bytes read
    std::uint64_t fileSize = 0;            ///< bytes in the file
    std::string whyNot;                    ///< why `bytes` is null

    std::span<const std::uint8_t> span() const { return {bytes.get(), size}; }
};

/// The most bytes that readFile() reads, just under 4 GiB.
inline constexpr std::uint32_t mostFileBytes = std::numeric_limits<std::uint32_t>::max();

/// Reads at most the first `most` bytes of a regular file. Anything else (a folder, a pipe, a
/// device) is refused without blocking. A file that shrinks while it is read is refused; of one
/// that grows, only the original size is read.
FileBytes readFile(const std::string& path, std::uint32_t most = mostFileBytes);

enum class FileAccess {
    asUsual,   ///< a new file gets the permissions that the umask allows
    ownerOnly, ///< only its owner can read and write a new file
};

/// Replaces or creates the file at `path`; returns why that failed, or an empty text. `path` always
/// holds either the complete old file or the complete new one, even after a power failure. After an
/// error it is the old one, and nothing else is left behind. (A killed process may leave its
/// temporary file, ".cabslot-...", in the folder; nothing reads it.)
///
/// Keeps the old file's permissions and, if it is the user's own, its group. Another user's file
/// becomes the writer's own, writable by nobody else: what is written must not be given away. A
/// symbolic link is followed and its target replaced, unless that changes meanwhile. Anything that
/// is not a regular file is refused.
std::string replaceFile(const std::string& path, std::span<const std::uint8_t> bytes,
                        FileAccess access = FileAccess::asUsual);

} // namespace cabslot
