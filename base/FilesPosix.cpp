// base/Files.h on POSIX systems.
#include "base/FileDescriptor.h"
#include "base/Files.h"
#include "base/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr mode_t permissionBits = 0777;
constexpr mode_t usualMode = 0666; // less the umask
constexpr mode_t ownerOnlyMode = 0600;
constexpr int mostLinks = 40;  // as many as the kernel follows
constexpr int mostNames = 100; // tries for a name that is free

/// Why `path` can name no file at all; empty when it can.
std::string whyNoPath(const std::string& path) {
    if (path.empty())
        return "no file was chosen";
    if (path.find('\0') != std::string::npos)
        return "there is no such file: its path holds a zero byte";
    return {};
}

std::string whyNotOpened(int error) {
    switch (error) {
    case ENOENT:
        return "there is no such file";
    case ENOTDIR:
        return "there is no such file: a part of its path is not a folder";
    case EACCES:
    case EPERM:
        return "you have no permission to read it";
    case ELOOP:
        return "it is a symbolic link that leads back to itself";
    case ENAMETOOLONG:
        return "its name or path is too long";
    case ENXIO:
        return "it is not a file but a socket or a device";
    default:
        return "it cannot be opened: " + systemErrorText(error);
    }
}

/// Why what has this mode is no regular file; empty when it is one.
std::string whyNotAFile(mode_t mode) {
    if (S_ISREG(mode))
        return {};
    if (S_ISDIR(mode))
        return "it is a folder; choose a file in it";
    if (S_ISFIFO(mode))
        return "it is not a file but a pipe";
    return "it is not a file but a device";
}

/// Fills `bytes` from the descriptor; returns why that failed, or an empty text.
std::string readBytes(int descriptor, std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::read(descriptor, bytes.data(), bytes.size());
        if (count == 0)
            return "it changed while it was being read; try again";
        if (count > 0)
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return "it cannot be read: " + systemErrorText(errno);
    }
    return {};
}

FileBytes refused(std::string whyNot) {
    FileBytes file;
    file.whyNot = std::move(whyNot);
    return file;
}

/// Opens a file that was not there, in `folder`, and says its name. Returns an error number.
int openNew(const fs::path& folder, mode_t mode, std::string& name, FileDescriptor& descriptor) {
    const std::string start = (folder / ".cabslot-").string() + std::to_string(::getpid()) + "-";
    for (int i = 0; i < mostNames; ++i) {
        name = start + std::to_string(i);
        descriptor =
            FileDescriptor(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (descriptor)
            return 0;
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

int takeOverAccess(const struct stat& old, int descriptor) {
    // Only root may give files away. For others, the new file is their own.
    [[maybe_unused]] const int given = ::fchown(descriptor, old.st_uid, old.st_gid);
    return ::fchmod(descriptor, old.st_mode & permissionBits) == 0 ? 0 : errno;
}

int writeAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0)
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return errno;
    }
    return ::fsync(descriptor) == 0 ? 0 : errno;
}

/// Makes `path` the place where the links end that start there; nothing need stand there.
int followLinks(fs::path& path) {
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code noLink;
        const fs::path next = fs::read_symlink(path, noLink);
        if (noLink)
            return 0;
        path = path.parent_path() / next;
    }
    return ELOOP;
}

/// Makes the folder's new entry survive a power cut. The file is in place by now, so a file system
/// that cannot do this is no failure.
void syncFolder(const fs::path& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor)
        ::fsync(descriptor.get());
}

/// `old` is null when there is no file at `target`, which is no link. Returns an error number.
int replaceAt(const fs::path& target, const struct stat* old, mode_t newMode,
              std::span<const std::uint8_t> bytes) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    std::string temporary;
    FileDescriptor descriptor;
    // Nobody else may read the new content before the old file's permissions are on it.
    if (const int error = openNew(folder, old ? ownerOnlyMode : newMode, temporary, descriptor))
        return error;
    int error = old ? takeOverAccess(*old, descriptor.get()) : 0;
    if (error == 0)
        error = writeAll(descriptor.get(), bytes);
    if (error == 0 && ::rename(temporary.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(temporary.c_str());
    else
        syncFolder(folder);
    return error;
}

} // namespace

FileBytes readFile(const std::string& path, std::uint32_t most) {
    if (std::string why = whyNoPath(path); !why.empty())
        return refused(std::move(why));
    // Without O_NONBLOCK a pipe that nobody writes to would hold the open until someone does.
    const FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0)
        return refused(whyNotOpened(errno));
    if (std::string why = whyNotAFile(status.st_mode); !why.empty())
        return refused(std::move(why));

    FileBytes file;
    file.fileSize = static_cast<std::uint64_t>(status.st_size);
    file.size = static_cast<std::uint32_t>(std::min<std::uint64_t>(file.fileSize, most));
    file.bytes.reset(new (std::nothrow) std::uint8_t[file.size]);
    if (!file.bytes)
        return refused("there is not enough memory to read its " + std::to_string(file.size) +
                       " bytes");
    if (std::string why = readBytes(descriptor.get(), {file.bytes.get(), file.size}); !why.empty())
        return refused(std::move(why));
    return file;
}

std::string replaceFile(const std::string& path, std::span<const std::uint8_t> bytes,
                        FileAccess access) {
    if (std::string why = whyNoPath(path); !why.empty())
        return why;
    // The kernel follows the links first: what it forbids, following them here must not allow.
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (!exists && errno != ENOENT)
        return systemErrorText(errno);
    if (exists && !S_ISREG(old.st_mode))
        return S_ISDIR(old.st_mode) ? systemErrorText(EISDIR) : "it is not a regular file";
    fs::path target = path;
    int error = followLinks(target);
    if (error == 0)
        error = replaceAt(target, exists ? &old : nullptr,
                          access == FileAccess::ownerOnly ? ownerOnlyMode : usualMode, bytes);
    return error == 0 ? std::string() : systemErrorText(error);
}

} // namespace cabslot
