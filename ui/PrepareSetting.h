// Whether files are prepared before they are loaded: one setting for the panel, drops and keys,
// remembered between runs. Main thread.
#pragma once

#include "ui/Preview.h"

#include <QString>

namespace cabslot {

inline const QString lowCutKey = QStringLiteral("openPanel/lowCut");   ///< Hz; 0: none
inline const QString highCutKey = QStringLiteral("openPanel/highCut"); ///< the same

bool preparesFiles(); ///< off until somebody turns it on
void setPreparesFiles(bool on);

/// How to load the file at `path` according to the settings.
Choice choiceFromSettings(const QString& path);

} // namespace cabslot
