// Lists a folder's subfolders and WAV files, or all WAV files below it, in a thread of its own: a
// slow disk or ten thousand files never keep the window from painting.
#pragma once

#include <QCollatorSortKey>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>

namespace cabslot {

struct FoundFile {
    QString name;
    QString folder; ///< where it is below the searched folder; empty: in that one itself
    QString path;   ///< absolute
    bool isFolder;
    qint64 modified;      ///< milliseconds since 1970, UTC
    QString words;        ///< what a filter is compared with: folder and name, case folded
    QCollatorSortKey key; ///< of the name, as a reader sorts: "Cap 2" before "Cap 10"
};

/// As FoundFile::words: in one case and one composition of accents.
QString foldedWords(const QString& text);

class FileSearch final : public QObject {
    Q_OBJECT
public:
    struct Where {
        QString folder; ///< absolute
        bool subfolders = false;
        bool hidden = false; ///< also names that begin with a dot
    };

    ~FileSearch() override;

    /// Ends the search that is under way, if any, of which nothing more is heard.
    void start(const Where& where);
    void stop();

signals:
    /// A part of the result, the first one within 30 ms; in no order.
    void found(const QList<FoundFile>& files);

    /// `words` is why there is nothing, or not all: a sentence; empty if all was found.
    void ended(const QString& words);

private:
    class Run;
    std::shared_ptr<Run> run_;
};

} // namespace cabslot
