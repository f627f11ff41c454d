// The system's fixed-pitch font, in any size. Each system has its own source file for this.
#pragma once

#include <QFont>

namespace cabslot {

QFont fixedFont();

} // namespace cabslot
