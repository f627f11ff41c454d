#include "fuzz/StandIn.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>

namespace cabslot::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownersMode = 0600;
constexpr off_t hugeSize = off_t{5} << 30;

void makeSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (path.size() < sizeof address.sun_path)
        static_cast<void>(
            ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    ::close(descriptor);
}

} // namespace

std::string StandIn::put(Standing standing, const std::string& name, const std::string& content) {
    std::string file = name;
    std::replace(file.begin(), file.end(), '/', ':'); // never out of the folder
    path_ = folder_.path(file);
    fileThere_ = false;
    named_ = !file.empty() && file.find('\0') == std::string::npos;
    if (named_)
        make(standing, content);
    return standing == Standing::behindFile ? path_ + "/" + file : path_;
}

void StandIn::make(Standing standing, const std::string& content) {
    std::error_code ignored; // of names that the system does not take, nothing is made
    switch (standing) {
    case Standing::file:
        makeFile(path_, content);
        break;
    case Standing::folder:
        fs::create_directory(path_, ignored);
        break;
    case Standing::pipe:
        ::mkfifo(path_.c_str(), ownersMode);
        break;
    case Standing::socket:
        makeSocket(path_);
        break;
    case Standing::device:
        fs::create_symlink("/dev/null", path_, ignored);
        break;
    case Standing::linkToFile:
        makeFile(realFile(), content);
        fs::create_symlink(realFile(), path_, ignored);
        fileThere_ = fileThere_ && !ignored;
        break;
    case Standing::linkToNothing:
        fs::create_symlink(realFile(), path_, ignored);
        break;
    case Standing::linkToItself:
        fs::create_symlink(path_, path_, ignored);
        break;
    case Standing::behindFile:
        makeFile(path_, content);
        fileThere_ = false;
        break;
    case Standing::hugeFile:
        makeFile(path_, {});
        if (fileThere_)
            fs::resize_file(path_, hugeSize, ignored);
        fileThere_ = false;
        break;
    case Standing::nothing:
    case Standing::count:
        break;
    }
}

void StandIn::makeFile(const std::string& path, const std::string& content) {
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, ownersMode);
    if (descriptor < 0)
        return;
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    ::close(descriptor);
    demand(written == static_cast<ssize_t>(content.size()), "the folder has room");
    fileThere_ = true;
}

void StandIn::clear() {
    std::error_code ignored;
    if (named_)
        fs::remove(path_, ignored);
    fs::remove(realFile(), ignored);
}

} // namespace cabslot::fuzz
