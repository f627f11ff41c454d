// Locks on Linux: flock() on the pedal's own device node or folder, so that whoever may use the
// pedal can lock it and nobody else can. A socket cannot be opened: a file in the user's state
// folder takes its place, which other users' programs do not see. It says who has the lock, for
// systems without /proc.
#include "base/FileDescriptor.h"
#include "base/PathText.h"
#include "base/StateFolder.h"
#include "base/VisibleText.h"
#include "platform/PedalLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr int mostTries = 100; // a holder that ends removes its lock file
constexpr mode_t ownerOnly = 0600;
constexpr const char* kernelsList = "/proc/locks";
constexpr std::size_t mostHolderBytes = 300;

class FileLock final : public PedalLock {
public:
    FileLock(FileDescriptor file, std::string toRemove)
        : file_(std::move(file)), toRemove_(std::move(toRemove)) {}
    ~FileLock() override { // removes the file while no other program can have locked it
        if (!toRemove_.empty())
            ::unlink(toRemove_.c_str());
    }

private:
    FileDescriptor file_;
    std::string toRemove_;
};

/// The file that stands for a socket; empty if the user has no state folder.
std::string lockFileOf(const struct stat& socket) {
    const std::string state = userStateFolder();
    if (state.empty())
        return {};
    const fs::path folder = pathOf(state) / "cabslot" / "locks";
    std::error_code failed; // then there is no lock
    fs::create_directories(folder, failed);
    return textOf(
        folder / ("socket-" + std::to_string(socket.st_dev) + "-" + std::to_string(socket.st_ino)));
}

bool sameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::string programOf(std::int64_t pid) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(pid) + "/comm"), name);
    return visibleText(name);
}

/// Who has an flock() on this file. The kernel lists the file system's device, which differs from
/// the file's on some (btrfs): there, a program of ours with a lock on that inode is the one.
std::optional<LockHolder> listedHolder(const struct stat& file) {
    std::ifstream locks(kernelsList);
    for (std::string line; std::getline(locks, line);) {
        long pid = 0;
        unsigned major = 0;
        unsigned minor = 0;
        unsigned long inode = 0;
        // NOLINTNEXTLINE(cert-err34-c): the kernel's numbers
        if (std::sscanf(line.c_str(), "%*d: FLOCK %*s WRITE %ld %x:%x:%lu", &pid, &major, &minor,
                        &inode) != 4 ||
            inode != file.st_ino)
            continue;
        const std::string program = programOf(pid);
        if (makedev(major, minor) == file.st_dev || program.starts_with("cabslot"))
            return LockHolder{.program = program, .pid = pid};
    }
    return std::nullopt;
}

/// Writes this program into the file of a lock that it has. A text that cannot be written only
/// leaves the holder unnamed.
void writeHolder(int file) {
    const std::string text =
        std::to_string(::getpid()) + " " + program_invocation_short_name + "\n";
    if (::ftruncate(file, 0) != 0)
        return;
    [[maybe_unused]] const auto written = ::pwrite(file, text.data(), text.size(), 0);
}

LockHolder writtenHolder(int file) {
    std::array<char, mostHolderBytes> text{};
    const auto size = ::pread(file, text.data(), text.size(), 0);
    LockHolder holder;
    if (size > 0)
        std::istringstream(std::string(text.data(), static_cast<std::size_t>(size))) >>
            holder.pid >> holder.program;
    holder.program = visibleText(holder.program);
    return holder;
}

/// Who has the lock of a socket's file, where the kernel's list cannot be read.
std::optional<LockHolder> holderOfFile(const std::string& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file || ::flock(file.get(), LOCK_SH | LOCK_NB) == 0)
        return std::nullopt;
    return writtenHolder(file.get());
}

LockAttempt lockFile(const std::string& path, int flags, bool remove) {
    for (int i = 0; i < mostTries; ++i) {
        FileDescriptor file(::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, ownerOnly));
        struct stat opened {};
        if (!file || ::fstat(file.get(), &opened) != 0)
            return {};
        if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK)
                return {};
            return {.holder = listedHolder(opened).value_or(remove ? writtenHolder(file.get())
                                                                   : LockHolder{})};
        }
        struct stat there {};
        if (::stat(path.c_str(), &there) != 0 || !sameFile(opened, there))
            continue;
        if (remove)
            writeHolder(file.get());
        return {.lock = std::make_unique<FileLock>(std::move(file), remove ? path : "")};
    }
    return {};
}

} // namespace

LockAttempt lockPedal(const std::string& place) {
    struct stat about {};
    if (::stat(place.c_str(), &about) != 0)
        return {};
    if (!S_ISSOCK(about.st_mode))
        return lockFile(place, O_RDONLY | O_NONBLOCK, false);
    const std::string file = lockFileOf(about);
    return file.empty() ? LockAttempt{} : lockFile(file, O_RDWR | O_CREAT | O_NOFOLLOW, true);
}

std::optional<LockHolder> holderOf(const std::string& place) {
    struct stat about {};
    if (::stat(place.c_str(), &about) != 0)
        return std::nullopt;
    if (!S_ISSOCK(about.st_mode))
        return listedHolder(about);
    const std::string file = lockFileOf(about);
    if (::stat(file.c_str(), &about) != 0)
        return std::nullopt;
    return ::access(kernelsList, R_OK) == 0 ? listedHolder(about) : holderOfFile(file);
}

} // namespace cabslot
