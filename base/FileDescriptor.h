// A file descriptor that its owner's destructor closes. POSIX systems only.
#pragma once

#include <unistd.h>
#include <utility>

namespace cabslot {

class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes ownership of the descriptor; a negative one means "none".
    explicit FileDescriptor(int fd) : fd_(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, none)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

    void close() {
        if (fd_ >= 0)
            ::close(std::exchange(fd_, none));
    }

private:
    static constexpr int none = -1;
    int fd_ = none;
};

} // namespace cabslot
