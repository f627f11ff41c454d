// A Unix SOCK_SEQPACKET socket that waits for connections, and its socket file.
#pragma once

#include "base/FileDescriptor.h"

#include <string>
#include <sys/types.h>

namespace cabslot::simulator {

class ListeningSocket {
public:
    ListeningSocket() = default;
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;
    ~ListeningSocket() { close(); }

    /// Starts listening. Replaces the stale socket file of a program that was killed. False, with
    /// the reason in `why`, if another program is listening there, if the path is too long or
    /// another kind of file, or if the system refuses.
    bool open(const std::string& path, std::string& why);

    /// Stops listening and removes the socket file, unless another program has replaced it.
    void close();

    /// The next connection; none if nobody is waiting or the system refuses (see errno).
    FileDescriptor accept();

    int fd() const { return fd_.get(); }

private:
    FileDescriptor fd_;
    std::string path_;
    dev_t device_ = 0; // with inode_: identifies the file that this socket created
    ino_t inode_ = 0;
};

} // namespace cabslot::simulator
