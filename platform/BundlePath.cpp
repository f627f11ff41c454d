#include "platform/BundlePath.h"

#include <filesystem>
#include <system_error>

namespace cabslot {

std::string installPrefix() {
    std::error_code
        failed; // without /proc the path is wrong, and the missing file will be reported
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    return program.parent_path().parent_path().string();
}

std::string bundlePath() {
    return (std::filesystem::path(installPrefix()) / "share" / "cabslot").string();
}

} // namespace cabslot
