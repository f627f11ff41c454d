#include "ui/Settings.h"

#include "base/VisibleText.h"

#include <QSettings>
#include <QString>
#include <QVariant>

#include <cstdio>
#include <utility>

namespace cabslot {

void storeSetting(const QString& key, const QVariant& value) {
    static bool complained = false;
    QSettings settings;
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError && !std::exchange(complained, true))
        std::fprintf(stderr,
                     "cabslot: what was chosen cannot be remembered: %s cannot be written\n",
                     visibleText(settings.fileName().toStdString()).c_str());
}

} // namespace cabslot
