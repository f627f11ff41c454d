// Restricted users and full disks for tests, on POSIX systems.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace cabslot::testing {

/// Root may do anything: if run as root, switches to another user during this object's lifetime.
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

/// During its lifetime, files of this process and its children cannot grow beyond this many bytes,
/// like a disk that fills up in the middle of a file.
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
