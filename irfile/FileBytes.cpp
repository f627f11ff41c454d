#include "irfile/FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

/// An open file descriptor, closed at the end; negative when there is none.
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
    int number_;
};

std::string systemText(int error) {
    return std::generic_category().message(error);
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
        return "it cannot be opened: " + systemText(error);
    }
}

std::string whyNotAFile(mode_t mode) {
    if (S_ISDIR(mode))
        return "it is a folder; choose a file in it";
    if (S_ISFIFO(mode))
        return "it is not a file but a pipe";
    return "it is not a file but a device";
}

/// Fills `bytes` with the next `size` bytes; returns why that failed, or an empty text.
std::string readBytes(int descriptor, std::uint8_t* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = ::read(descriptor, bytes, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return "it cannot be read: " + systemText(errno);
        if (count == 0)
            return "it changed while it was being read; try again";
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return {};
}

FileBytes refused(std::string whyNot) {
    FileBytes file;
    file.whyNot = std::move(whyNot);
    return file;
}

} // namespace

FileBytes readFile(const std::string& path, std::uint32_t most) {
    if (path.empty())
        return refused("no file was chosen");
    if (path.find('\0') != std::string::npos)
        return refused("there is no such file: its path holds a zero byte");

    // Without O_NONBLOCK a pipe that nobody writes to would hold the open until someone does.
    const Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (descriptor.number() < 0 || ::fstat(descriptor.number(), &status) != 0)
        return refused(whyNotOpened(errno));
    if (!S_ISREG(status.st_mode))
        return refused(whyNotAFile(status.st_mode));
    if (std::cmp_greater(status.st_size, wholeFile))
        return refused("it is too large: files of 4 GiB and more are not read");

    FileBytes file;
    const auto all = static_cast<std::uint32_t>(status.st_size);
    file.size = std::min(all, most);
    file.whole = file.size == all;
    file.bytes.reset(new (std::nothrow) std::uint8_t[file.size]);
    if (!file.bytes)
        return refused("there is not enough memory to read its " + std::to_string(file.size) +
                       " bytes");
    if (std::string whyNot = readBytes(descriptor.number(), file.bytes.get(), file.size);
        !whyNot.empty())
        return refused(std::move(whyNot));
    return file;
}

} // namespace cabslot
