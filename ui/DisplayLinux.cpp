#include "ui/Display.h"

#include <QFontDatabase>
#include <QtGlobal>

namespace cabslot {

bool hasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

QFont fixedFont() {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

} // namespace cabslot
