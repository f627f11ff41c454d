// A Unix SOCK_SEQPACKET socket that waits for connections, and the file that stands for it.
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

    /// Starts listening. A socket file that nobody answers, left by a program that was killed, is
    /// replaced. False, with the reason in `why`, when somebody answers, when the path is another
    /// kind of file or too long, or when the system refuses.
    bool open(const std::string& path, std::string& why);

    /// Stops listening and removes the socket file, unless another program has put its own there.
    void close();

    /// The next connection; none when nobody waits or the system refuses (see errno).
    FileDescriptor accept();

    int fd() const { return fd_.get(); }

private:
    FileDescriptor fd_;
    std::string path_;
    dev_t device_ = 0; // with inode_: which file this socket made
    ino_t inode_ = 0;
};

} // namespace cabslot::simulator
