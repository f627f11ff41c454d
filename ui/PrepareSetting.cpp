#include "ui/PrepareSetting.h"

#include "ui/Settings.h"

#include <QSettings>

namespace cabslot {

namespace {

const QString prepareKey = QStringLiteral("openPanel/prepare");

} // namespace

bool preparesFiles() {
    return QSettings().value(prepareKey, false).toBool();
}

void setPreparesFiles(bool on) {
    if (on != preparesFiles())
        storeSetting(prepareKey, on);
}

Choice choiceFromSettings(const QString& path) {
    const QSettings settings;
    return {.path = path,
            .prepares = preparesFiles(),
            .lowCut = settings.value(lowCutKey, 0).toDouble(),
            .highCut = settings.value(highCutKey, 0).toDouble()};
}

} // namespace cabslot
