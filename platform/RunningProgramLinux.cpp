#include "platform/RunningProgram.h"

#include <sys/auxv.h>

#include <system_error>

namespace cabslot {

std::filesystem::path runningProgram() {
    std::error_code failed;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (!failed)
        return program;
    // Without /proc, use the name by which the program was started.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel gives pointers as numbers
    const auto* startedAs = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return startedAs == nullptr ? program : std::filesystem::canonical(startedAs, failed);
}

} // namespace cabslot
