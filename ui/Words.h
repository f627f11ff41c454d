// Words that several messages of the window share.
#pragma once

#include "base/Pedal.h"
#include "base/VisibleText.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace cabslot {

/// "User 1" to "User 4".
inline QString slotName(std::int64_t index) {
    return QString::fromStdString(defaultSlotName(static_cast<std::size_t>(index)));
}

/// "User 1, User 3"
inline QString slotNames(const std::vector<std::int64_t>& indexes) {
    QStringList names;
    for (const std::int64_t slot : indexes)
        names << slotName(slot);
    return names.join(", ");
}

inline QString quoted(const QString& name) {
    return "“" + name + "”";
}

/// Put before the progress of one of several uploads, which `index` counts from 0: "2 of 3: ".
inline QString seriesText(qsizetype index, qsizetype count) {
    return QString("%1 of %2: ").arg(index + 1).arg(count);
}

inline const QString fileError = "File Error!! Please check the file or file name for errors.";

/// `text`, which came from outside, as it can be shown.
inline QString visible(const QString& text) {
    return QString::fromStdString(visibleText(text.toStdString()));
}

/// A tool tip that shows `text` as it is: Qt takes plain text for rich if it looks so.
inline QString toolTipOf(const QString& text) {
    return "<qt>" + text.toHtmlEscaped().replace('\n', "<br>") + "</qt>";
}

} // namespace cabslot
