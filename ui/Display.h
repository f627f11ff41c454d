// Whether there is a display for a window. Each system has its own source file for it.
#pragma once

namespace cabslot {

bool hasDisplay();

} // namespace cabslot
