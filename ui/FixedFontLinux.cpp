#include "ui/FixedFont.h"

#include <QFontDatabase>

namespace cabslot {

QFont fixedFont() {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

} // namespace cabslot
