// Small files: their first bytes in, whole files out. Errors are errno's numbers, 0 for success.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// The error of a path at which stands no file but a pipe, a device or a socket.
inline constexpr int notARegularFile = ENOTSUP;

/// What `error` means, for the user to read behind a colon.
std::string fileErrorText(int error);

/// Reads the file's first bytes, as many as `buffer` takes or the file has; `count` says how many.
/// Only regular files are read, without waiting for what is none.
int readFileStart(const std::string& path, std::span<std::uint8_t> buffer, std::size_t& count);

/// Replaces the file at `path` by `bytes`, or makes it. Whatever happens meanwhile, at `path`
/// stands all of the old file or all of the new one; after a failure it is the old one and nothing
/// else is left behind. (A process that is killed may leave its temporary file, ".cabslot-...", in
/// the folder; nothing reads it.)
///
/// The new file has the old one's permissions and, where the system allows it, owner; a new file
/// has what the process's umask gives. Of a symbolic link, the file that it leads to is replaced.
/// What is there but is no regular file is refused.
int replaceFile(const std::string& path, std::span<const std::uint8_t> bytes);

} // namespace cabslot
