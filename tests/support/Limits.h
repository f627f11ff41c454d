// Users and disks for tests, on POSIX systems.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace cabslot::testing {

/// Root may do everything: as root, the process is somebody else while this lives.
class NotRoot {
public:
    NotRoot() : wasRoot_(::geteuid() == 0 && ::seteuid(somebody) == 0) {}
    NotRoot(const NotRoot&) = delete;
    NotRoot& operator=(const NotRoot&) = delete;
    ~NotRoot() {
        if (wasRoot_ && ::seteuid(0) != 0)
            std::abort();
    }

private:
    static constexpr uid_t somebody = 65534;
    bool wasRoot_;
};

/// While it lives, no file of this process and its children grows beyond so many bytes: to a
/// program this is a disk that runs full in the middle of a file.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit before_{};
};

} // namespace cabslot::testing
