#include "simulator/server/ListeningSocket.h"

#include "base/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <utility>

namespace cabslot::simulator {

namespace {

bool refuse(std::string& why, const std::string& path, const std::string& reason) {
    why = "cannot listen on " + path + ": " + reason;
    return false;
}

FileDescriptor makeSocket() {
    return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/// The socket calls take the general address type.
const sockaddr* general(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

bool makeAddress(const std::string& path, sockaddr_un& address, std::string& why) {
    const std::size_t longest = sizeof address.sun_path - 1;
    if (path.empty())
        return refuse(why, "\"\"", "the path is empty");
    if (path.size() > longest) {
        return refuse(why, path,
                      "the path is too long for a socket, " + std::to_string(longest) +
                          " bytes at most");
    }
    address = {};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    return true;
}

/// Locks the socket's folder: of two programs that find the same stale socket file, the second must
/// not remove the first one's new one. Gives up after a while, since anyone can lock a shared
/// folder.
FileDescriptor lockFolderOf(const std::string& path) {
    using namespace std::chrono_literals;
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    FileDescriptor lock(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int tries = 100; lock && ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0 && tries > 0; --tries)
        std::this_thread::sleep_for(10ms);
    return lock;
}

/// Removes a stale socket file at the path; false if anything else is there.
bool clearPath(const std::string& path, const sockaddr_un& address, std::string& why) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0)
        return errno == ENOENT || refuse(why, path, systemErrorText(errno));
    if (!S_ISSOCK(status.st_mode))
        return refuse(why, path, "there is a file that is not a socket");
    const FileDescriptor probe = makeSocket();
    if (!probe)
        return refuse(why, path, systemErrorText(errno));
    if (::connect(probe.get(), general(address), sizeof address) == 0 || errno == EAGAIN ||
        errno == EPROTOTYPE)
        return refuse(why, path, "another program is listening there");
    if (errno != ECONNREFUSED && errno != ENOENT)
        return refuse(why, path, systemErrorText(errno));
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        return refuse(why, path, systemErrorText(errno));
    return true;
}

} // namespace

bool ListeningSocket::open(const std::string& path, std::string& why) {
    close();
    sockaddr_un address{};
    if (!makeAddress(path, address, why))
        return false;
    const FileDescriptor untilItListens = lockFolderOf(path);
    if (!clearPath(path, address, why))
        return false;
    FileDescriptor fd = makeSocket();
    if (!fd || ::bind(fd.get(), general(address), sizeof address) != 0)
        return refuse(why, path, systemErrorText(errno));
    struct stat status {};
    if (::listen(fd.get(), SOMAXCONN) != 0 || ::lstat(path.c_str(), &status) != 0) {
        const int error = errno;
        ::unlink(path.c_str());
        return refuse(why, path, systemErrorText(error));
    }
    fd_ = std::move(fd);
    path_ = path;
    device_ = status.st_dev;
    inode_ = status.st_ino;
    return true;
}

void ListeningSocket::close() {
    if (!fd_)
        return;
    struct stat status {};
    if (::lstat(path_.c_str(), &status) == 0 && status.st_dev == device_ && status.st_ino == inode_)
        ::unlink(path_.c_str());
    fd_.close();
}

FileDescriptor ListeningSocket::accept() {
    return FileDescriptor(::accept4(fd_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
}

} // namespace cabslot::simulator
