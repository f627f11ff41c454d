#include "platform/BundlePath.h"

#include "platform/RunningProgram.h"

namespace cabslot {

std::string installPrefix() {
    return runningProgram().parent_path().parent_path().string();
}

std::string bundlePath() {
    return (std::filesystem::path(installPrefix()) / "share" / "cabslot").string();
}

} // namespace cabslot
