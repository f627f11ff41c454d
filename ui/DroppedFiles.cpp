#include "ui/DroppedFiles.h"

#include "base/Pedal.h"
#include "irfile/IRFile.h"
#include "sets/SetFile.h"
#include "ui/Preview.h"
#include "ui/Words.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace cabslot {

namespace {

constexpr qsizetype namesShown = 12; // of more files than slots

/// Why the file cannot be loaded; empty if it can. Changes nothing that is sent.
QString whyNotDropped(const QUrl& url) {
    if (!url.isLocalFile())
        return quoted(url.toString()) + ": it is not a file on this computer.";
    const QFileInfo file(url.toLocalFile());
    if (file.isDir())
        return quoted(file.fileName()) + ": it is a folder; drop the files in it.";
    if (isSetName(file.fileName().toStdString()))
        return quoted(file.fileName()) + ": drop a set alone.";
    if (!isWavName(file.fileName()))
        return quoted(file.fileName()) + ": only WAV files (.wav) can be dropped.";
    const ReadIR read = readIR(url.toLocalFile().toStdString());
    if (read)
        return {};
    return quoted(file.fileName()) + ": " + QString::fromStdString(read.whyRefused) + ".";
}

QString namesOf(const QList<QUrl>& files) {
    QStringList names;
    for (const QUrl& file : files.first(std::min(files.size(), namesShown)))
        names << quoted(file.fileName());
    const qsizetype rest = files.size() - names.size();
    return names.join(", ") + (rest > 0 ? QString(" and %1 more").arg(rest) : QString());
}

} // namespace

QString setAmong(const QList<QUrl>& files) {
    const bool one = files.size() == 1 && files.first().isLocalFile();
    const QString path = one ? files.first().toLocalFile() : QString();
    return isSetName(path.toStdString()) ? path : QString();
}

QString whyNotDropped(std::int64_t index, const QList<QUrl>& files) {
    const qsizetype free = static_cast<qsizetype>(slotCount) - index + 1;
    if (files.size() > free)
        return QString("%1 files were dropped, but from %2 on there %3: %4.")
            .arg(files.size())
            .arg(slotName(index))
            .arg(free == 1 ? "is 1 slot" : QString("are %1 slots").arg(free))
            .arg(namesOf(files));
    QStringList reasons;
    for (const QUrl& file : files) {
        if (const QString why = whyNotDropped(file); !why.isEmpty())
            reasons << why;
    }
    return reasons.join(' ');
}

} // namespace cabslot
