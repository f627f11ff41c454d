// Windows numbers no handles, but the C library does: its descriptors 0 to 2.
#include "base/StandardStreams.h"

#include <fcntl.h>
#include <io.h>

namespace cabslot {

void openStandardStreams() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (::_get_osfhandle(stream) < 0) [[maybe_unused]]
            const int opened = ::_open("NUL", _O_RDWR);
    }
}

} // namespace cabslot
