// Whole files: read into memory, and replaced in one step. Paths are UTF-8.
//
// Any thread. Failures come back as words that follow the path and a colon.
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
    std::uint32_t size = 0;                ///< how many bytes
    std::uint64_t fileSize = 0;            ///< how many the file has
    std::string whyNot;                    ///< why `bytes` is null

    bool whole() const { return size == fileSize; }
    std::span<const std::uint8_t> span() const { return {bytes.get(), size}; }
};

/// The most bytes that are read, just under 4 GiB.
inline constexpr std::uint32_t mostFileBytes = std::numeric_limits<std::uint32_t>::max();

/// Reads the first `most` bytes, or all, of a regular file. Anything else (a folder, a pipe, a
/// device) is refused without waiting for it. A file that shrinks meanwhile is refused; of one that
/// grows, the part that was there at the start is taken.
FileBytes readFile(const std::string& path, std::uint32_t most = mostFileBytes);

enum class FileAccess {
    asUsual,   ///< a new file gets what the process's umask gives
    ownerOnly, ///< a new file is readable and writable by its owner alone
};

/// Replaces the file at `path` by `bytes`, or makes it; returns why that failed, or an empty text.
/// Whatever happens meanwhile, at `path` stands all of the old file or all of the new one, also
/// after a power cut; after a failure it is the old one and nothing else is left behind. (A process
/// that is killed may leave its temporary file, ".cabslot-...", in the folder; nothing reads it.)
///
/// An old file's permissions are kept and, where the system allows it, its owner. Of a symbolic
/// link, the file that it leads to is replaced. What is there but is no regular file is refused.
std::string replaceFile(const std::string& path, std::span<const std::uint8_t> bytes,
                        FileAccess access = FileAccess::asUsual);

} // namespace cabslot
