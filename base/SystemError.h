// Operating system errors as text.
#pragma once

#include <string>

namespace cabslot {

/// The text for an errno number, such as "No space left on device". Any thread.
std::string systemErrorText(int error);

} // namespace cabslot
