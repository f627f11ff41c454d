// base/Output.h on POSIX systems.
#include "base/FileDescriptor.h"
#include "base/Output.h"
#include "base/SystemError.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr int pollInterval = 50; // ms

class DescriptorStream final : public OutputStream {
public:
    explicit DescriptorStream(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    // Standard output's description is shared, so it is not made non-blocking. A write of up to
    // PIPE_BUF bytes to what poll() reports as writable does not block.
    std::string write(std::span<const std::uint8_t> bytes,
                      const std::function<bool()>& stops) override {
        while (!bytes.empty()) {
            if (stops())
                return "it was interrupted";
            pollfd ready = {.fd = descriptor_.get(), .events = POLLOUT, .revents = 0};
            if (::poll(&ready, 1, pollInterval) <= 0)
                continue;
            const ssize_t count = ::write(descriptor_.get(), bytes.data(),
                                          std::min<std::size_t>(bytes.size(), PIPE_BUF));
            if (count >= 0)
                bytes = bytes.subspan(static_cast<std::size_t>(count));
            else if (errno != EINTR && errno != EAGAIN)
                return systemErrorText(errno);
        }
        return {};
    }

private:
    FileDescriptor descriptor_;
};

OutputPlace refused(std::string whyNot) {
    return {.whyNot = std::move(whyNot)};
}

OutputPlace streamOn(FileDescriptor descriptor) {
    OutputPlace place;
    place.stream = std::make_unique<DescriptorStream>(std::move(descriptor));
    return place;
}

/// The descriptor that a name such as /dev/stdout stands for; -1 for any other path.
int standardStream(const std::string& path) {
    if (path == "/dev/stdout")
        return STDOUT_FILENO;
    return path == "/dev/stderr" ? STDERR_FILENO : -1;
}

OutputPlace openStream(const std::string& path, mode_t mode) {
    if (S_ISBLK(mode))
        return refused("it is not a file but a disk");
    if (S_ISSOCK(mode))
        return refused("it is not a file but a socket");
    FileDescriptor descriptor(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!descriptor)
        return refused(errno == ENXIO && S_ISFIFO(mode)
                           ? "it is not a file but a pipe, and no program reads from it"
                           : systemErrorText(errno));
    OutputPlace place = streamOn(std::move(descriptor));
    place.isPipe = S_ISFIFO(mode);
    return place;
}

/// Whether replaceFile() may create files in the folder that holds `path` or what it links to.
std::string whyNoNewFile(const std::string& path) {
    std::error_code unknown;
    const fs::path target = fs::weakly_canonical(path, unknown);
    const fs::path folder = (unknown ? fs::path(path) : target).parent_path();
    const bool writable = ::access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) == 0;
    return writable ? std::string() : systemErrorText(errno);
}

} // namespace

OutputPlace findOutput(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        return refused("it has no name");
    if (const int shared = standardStream(path); shared >= 0)
        return streamOn(FileDescriptor(::fcntl(shared, F_DUPFD_CLOEXEC, 0)));
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        return refused(systemErrorText(errno));
    if (S_ISDIR(status.st_mode) || path.ends_with('/'))
        return refused(systemErrorText(EISDIR));
    if (exists && !S_ISREG(status.st_mode))
        return openStream(path, status.st_mode);
    return {.whyNot = whyNoNewFile(path), .isFile = exists};
}

} // namespace cabslot
