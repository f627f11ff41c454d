#include "ui/SlotContent.h"

#include "irfile/NameField.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>

namespace cabslot {

namespace {

QString textOf(const std::vector<Finding>& findings) {
    QStringList texts;
    for (const Finding& finding : findings)
        texts << QString::fromStdString(finding.text);
    return texts.join('\n');
}

} // namespace

QString dayOf(const SlotRecord& record) {
    const QDate day = QDateTime::fromSecsSinceEpoch(record.time.time_since_epoch().count()).date();
    const bool thisYear = day.year() == QDate::currentDate().year();
    return QLocale::c().toString(day, thisYear ? "d MMM" : "d MMM yyyy");
}

SlotContent contentOf(const SlotRecord& record, const std::string& origin) {
    SlotContent content;
    content.detail = QString::fromStdString(record.ir.source);
    if (!record.confirmed) {
        content.problem = true;
        content.rest = "Not confirmed by the pedal: load it again to be sure";
    } else if (record.isClear()) {
        content.rest = "Cleared on " + dayOf(record);
    } else {
        content.file = QFileInfo(content.detail).fileName();
        content.rest = ", " + dayOf(record);
    }
    content.summary = IRSummary{.name = nameText(record.ir.name),
                                .origin = origin.empty() ? content.line().toStdString() : origin,
                                .frames = {},
                                .samples = samplesOf(record.ir.block),
                                .findings = record.findings};
    if (record.findings.empty()) // as in records of the first version, which have none
        content.summary->findings = findingsOf(content.summary->samples, FileFacts{});
    if (!record.isClear())
        content.findings = textOf(content.summary->findings);
    return content;
}

} // namespace cabslot
