// The system's font of fixed pitch, of any size. Each system has its own source file for it.
#pragma once

#include <QFont>

namespace cabslot {

QFont fixedFont();

} // namespace cabslot
