// Checks files that were dropped on a slot, before any of them is loaded.
#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace cabslot {

/// Why not all of `files` can be loaded into slot `index` (1 to 4) and the next ones, in sentences;
/// empty if they can. Changes nothing that is sent.
QString whyNotDropped(std::int64_t index, const QList<QUrl>& files);

/// The set if exactly one file was dropped and it is named like one; else empty.
QString setAmong(const QList<QUrl>& files);

} // namespace cabslot
