// base/Files.h and base/InputFile.h on POSIX systems.
#include "base/FileDescriptor.h"
#include "base/Files.h"
#include "base/InputFile.h"
#include "base/SystemError.h"
#include "base/TemporaryName.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr mode_t permissionBits = 0777;
constexpr mode_t writableByOthers = 0022;
constexpr mode_t usualMode = 0666; // less the umask
constexpr mode_t ownerOnlyMode = 0600;
constexpr int mostLinks = 40;                               // the kernel's own limit
constexpr int mostNames = 100;                              // attempts to find an unused name
constexpr int anyFolder = O_PATH | O_DIRECTORY | O_CLOEXEC; // also one that may not be listed

/// Why `path` cannot name any file; empty if it can.
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

/// Why a file of this mode is not a regular file; empty if it is one.
std::string whyNotAFile(mode_t mode) {
    if (S_ISREG(mode))
        return {};
    if (S_ISDIR(mode))
        return "it is a folder; choose a file in it";
    if (S_ISFIFO(mode))
        return "it is not a file but a pipe";
    return "it is not a file but a device";
}

/// Creates a new file in `folder` and sets `name` to its name. Returns an error number.
int openNew(int folder, mode_t mode, std::string& name, FileDescriptor& descriptor) {
    for (int i = 0; i < mostNames; ++i) {
        name = temporaryName();
        descriptor = FileDescriptor(
            ::openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (descriptor)
            return 0;
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

/// The new file stays its writer's own: only from a file of the same owner does it get everything.
int takeOverAccess(const struct stat& old, int descriptor) {
    const bool own = old.st_uid == ::geteuid();
    if (own) {
        // A group that the user does not belong to cannot be kept.
        [[maybe_unused]] const int given = ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid);
    }
    const mode_t kept = own ? permissionBits : permissionBits & ~writableByOthers;
    return ::fchmod(descriptor, old.st_mode & kept) == 0 ? 0 : errno;
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

/// Follows symbolic links from `path` to their target, which need not exist.
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

/// Makes the new folder entry durable. The file is already in place, so a file system that does not
/// support this is not an error.
void syncFolder(int folder) {
    const FileDescriptor descriptor(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor)
        ::fsync(descriptor.get());
}

/// Whether `name` in `folder` is `old`, or is not there if `old` is null.
bool isStill(int folder, const std::string& name, const struct stat* old) {
    struct stat now {};
    if (::fstatat(folder, name.c_str(), &now, AT_SYMLINK_NOFOLLOW) != 0)
        return old == nullptr && errno == ENOENT;
    return old != nullptr && now.st_dev == old->st_dev && now.st_ino == old->st_ino;
}

/// `old` is null if `target`, which is not a link, does not exist. Returns an error number; ESTALE
/// if `target` is another file by now: someone swapped a link or a folder on the way to it.
int replaceAt(const fs::path& target, const struct stat* old, mode_t newMode,
              std::span<const std::uint8_t> bytes) {
    const fs::path where = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const std::string name = target.filename();
    // Everything that follows happens in this one folder, whatever becomes of its path.
    const FileDescriptor folder(::open(where.c_str(), anyFolder));
    if (!folder)
        return errno;
    if (!isStill(folder.get(), name, old))
        return ESTALE;
    std::string temporary;
    FileDescriptor descriptor;
    // No other user may read the new content before the old file's permissions are set.
    if (const int error =
            openNew(folder.get(), old ? ownerOnlyMode : newMode, temporary, descriptor))
        return error;
    int error = old ? takeOverAccess(*old, descriptor.get()) : 0;
    if (error == 0)
        error = writeAll(descriptor.get(), bytes);
    if (error == 0 && ::renameat(folder.get(), temporary.c_str(), folder.get(), name.c_str()) != 0)
        error = errno;
    if (error != 0)
        ::unlinkat(folder.get(), temporary.c_str(), 0);
    else
        syncFolder(folder.get());
    return error;
}

} // namespace

struct InputFile::Handle {
    FileDescriptor descriptor;
};

InputFile::InputFile() = default;
InputFile::~InputFile() = default;

std::string InputFile::open(const std::string& path) {
    if (std::string why = whyNoPath(path); !why.empty())
        return why;
    // Without O_NONBLOCK, opening a pipe would block until another process writes to it.
    FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0)
        return whyNotOpened(errno);
    if (std::string why = whyNotAFile(status.st_mode); !why.empty())
        return why;
    size_ = static_cast<std::uint64_t>(status.st_size);
    handle_ = std::make_unique<Handle>();
    handle_->descriptor = std::move(descriptor);
    return {};
}

std::string InputFile::read(std::uint64_t position, std::span<std::uint8_t> bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::pread(handle_->descriptor.get(), bytes.data(), bytes.size(),
                                      static_cast<off_t>(position));
        if (count == 0)
            return "it changed while it was being read; try again";
        if (count > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            position += static_cast<std::uint64_t>(count);
        } else if (errno != EINTR) {
            return "it cannot be read: " + systemErrorText(errno);
        }
    }
    return {};
}

std::uint64_t InputFile::afterHole(std::uint64_t position) const {
    const off_t data = ::lseek(handle_->descriptor.get(), static_cast<off_t>(position), SEEK_DATA);
    if (data >= 0)
        return static_cast<std::uint64_t>(data);
    return errno == ENXIO ? size_ : position; // nothing but a hole up to the end; not supported
}

std::string replaceFile(const std::string& path, std::span<const std::uint8_t> bytes,
                        FileAccess access) {
    if (std::string why = whyNoPath(path); !why.empty())
        return why;
    // Let the kernel resolve the path first: followLinks() must not bypass its permission checks.
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
    if (error == ESTALE)
        return "it was swapped for another file meanwhile; try again";
    return error == 0 ? std::string() : systemErrorText(error);
}

} // namespace cabslot
