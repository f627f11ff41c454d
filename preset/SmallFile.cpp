#include "preset/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr mode_t permissionBits = 0777;
constexpr mode_t newFileMode = 0666; // less the umask
constexpr mode_t privateMode = 0600; // until the old file's permissions are set
constexpr int mostLinks = 40;        // as many as the kernel follows
constexpr int mostNames = 100;       // tries for a name that is free

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    int number() const { return number_; }

private:
    int number_; // negative: none
};

/// A path as the system can take it: what stands behind a zero byte would be lost.
bool isPath(const std::string& path) {
    return !path.empty() && path.find('\0') == std::string::npos;
}

int whyNoFile(mode_t mode) {
    if (S_ISREG(mode))
        return 0;
    return S_ISDIR(mode) ? EISDIR : notARegularFile;
}

/// Opens a file that was not there, in `folder`, and says its name. Returns an error.
int openNew(const fs::path& folder, mode_t mode, std::string& name, int& descriptor) {
    const std::string start = (folder / ".cabslot-").string() + std::to_string(::getpid()) + "-";
    for (int i = 0; i < mostNames; ++i) {
        name = start + std::to_string(i);
        descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0)
            return 0;
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

int takeAfter(const struct stat& old, int descriptor) {
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

/// Where the links end that start at `path`; nothing need stand there.
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
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.number() >= 0)
        ::fsync(descriptor.number());
}

/// `old` is null when there is no file at `target`, which is no link.
int replaceAt(const fs::path& target, const struct stat* old, std::span<const std::uint8_t> bytes) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    std::string temporary;
    int number = -1;
    if (const int error = openNew(folder, old ? privateMode : newFileMode, temporary, number))
        return error;
    const Descriptor descriptor(number);
    int error = old ? takeAfter(*old, number) : 0;
    if (error == 0)
        error = writeAll(number, bytes);
    if (error == 0 && ::rename(temporary.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(temporary.c_str());
    else
        syncFolder(folder);
    return error;
}

} // namespace

std::string fileErrorText(int error) {
    return error == notARegularFile ? "it is not a regular file"
                                    : std::generic_category().message(error);
}

int readFileStart(const std::string& path, std::span<std::uint8_t> buffer, std::size_t& count) {
    count = 0;
    if (!isPath(path))
        return ENOENT;
    // Without O_NONBLOCK a pipe that nobody writes to would hold the open until someone does.
    const Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (descriptor.number() < 0 || ::fstat(descriptor.number(), &status) != 0)
        return errno == ENXIO ? notARegularFile : errno; // ENXIO: a socket
    if (const int error = whyNoFile(status.st_mode))
        return error;
    while (count < buffer.size()) {
        const ssize_t got = ::read(descriptor.number(), &buffer[count], buffer.size() - count);
        if (got == 0)
            break;
        if (got > 0)
            count += static_cast<std::size_t>(got);
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

int replaceFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    if (!isPath(path))
        return ENOENT;
    // The kernel goes first: what it forbids about links, the own way along them must not allow.
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (!exists && errno != ENOENT)
        return errno;
    if (const int error = exists ? whyNoFile(old.st_mode) : 0)
        return error;
    fs::path target = path;
    if (const int error = followLinks(target))
        return error;
    return replaceAt(target, exists ? &old : nullptr, bytes);
}

} // namespace cabslot
