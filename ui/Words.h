// Words that several messages of the window share.
#pragma once

#include "base/Pedal.h"

#include <QString>

namespace cabslot {

/// "User 1" to "User 4".
inline QString slotName(std::int64_t index) {
    return QString::fromStdString(defaultSlotName(static_cast<std::size_t>(index)));
}

inline QString quoted(const QString& name) {
    return "“" + name + "”";
}

/// A tool tip that shows `text` as it is: Qt takes plain text for rich if it looks so.
inline QString toolTipOf(const QString& text) {
    return "<qt>" + text.toHtmlEscaped().replace('\n', "<br>") + "</qt>";
}

} // namespace cabslot
