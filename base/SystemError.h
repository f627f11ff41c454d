// The operating system's errors in words.
#pragma once

#include <string>

namespace cabslot {

/// What an errno number means, such as "No space left on device". Any thread.
std::string systemErrorText(int error);

} // namespace cabslot
