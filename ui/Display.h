// What the system has for a window. Each system has its own source file for it. Main thread.
#pragma once

#include <QFont>

namespace cabslot {

bool hasDisplay();

QFont fixedFont(); ///< the system's one of fixed pitch, of any size

} // namespace cabslot
