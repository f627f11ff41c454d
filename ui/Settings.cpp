#include "ui/Settings.h"

#include "ui/Problem.h"

#include <QSettings>
#include <QString>
#include <QVariant>

#include <utility>

namespace cabslot {

void storeSetting(const QString& key, const QVariant& value) {
    static bool complained = false;
    QSettings settings;
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError && !std::exchange(complained, true))
        printProblem("what was chosen cannot be remembered: " + settings.fileName().toStdString() +
                     " cannot be written");
}

} // namespace cabslot
