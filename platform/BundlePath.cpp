#include "platform/BundlePath.h"

#include "base/PathText.h"
#include "platform/RunningProgram.h"

namespace cabslot {

std::string installPrefix() {
    return textOf(runningProgram().parent_path().parent_path());
}

std::string bundlePath() {
    return textOf(pathOf(installPrefix()) / "share" / "cabslot");
}

} // namespace cabslot
