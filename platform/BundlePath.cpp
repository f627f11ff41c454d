#include "platform/BundlePath.h"

#include <sys/auxv.h>

#include <filesystem>
#include <system_error>

namespace cabslot {

namespace {

// With all links followed. Where /proc is not mounted, the name that the program was started by
// leads to it. If that fails, too, the path is wrong, and the missing file will be reported.
std::filesystem::path runningProgram() {
    std::error_code failed;
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (!failed)
        return program;
    const auto* startedAs = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return startedAs == nullptr ? program : std::filesystem::canonical(startedAs, failed);
}

} // namespace

std::string installPrefix() {
    return runningProgram().parent_path().parent_path().string();
}

std::string bundlePath() {
    return (std::filesystem::path(installPrefix()) / "share" / "cabslot").string();
}

} // namespace cabslot
