#include "base/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

namespace cabslot {

void openStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        // open() takes the lowest free number, which is this one.
        if (::fcntl(stream, F_GETFD) < 0) [[maybe_unused]]
            const int opened = ::open("/dev/null", O_RDWR);
    }
}

} // namespace cabslot
