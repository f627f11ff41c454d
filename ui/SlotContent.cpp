#include "ui/SlotContent.h"

#include "irfile/NameField.h"

#include <QDateTime>
#include <QLocale>

namespace cabslot {

QString lineOf(const std::optional<SlotRecord>& record) {
    if (!record)
        return {};
    const QDate day = QDateTime::fromSecsSinceEpoch(record->time.time_since_epoch().count()).date();
    const bool thisYear = day.year() == QDate::currentDate().year();
    return (record->isClear() ? "Cleared" : "Loaded") + QString(" from here on ") +
           QLocale::c().toString(day, thisYear ? "d MMM" : "d MMM yyyy");
}

SlotContent contentOf(const std::optional<SlotRecord>& record) {
    if (!record)
        return {};
    const QString line = lineOf(record);
    return {line, summaryOf(record->ir.block, nameText(record->ir.name), line.toStdString())};
}

} // namespace cabslot
