#include "ui/FileSearch.h"

#include "ui/Preview.h"

#include <QCollator>
#include <QDateTime>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QSet>

#include <atomic>
#include <mutex>
#include <thread>
#include <utility>

namespace cabslot {

namespace {

constexpr qint64 firstInterval = 30; // ms until the first part
constexpr qint64 interval = 200;     // ms from part to part
constexpr int mostFiles = 50000;     // beyond them, a list is of no use

QCollator makeCollator() {
    const QLocale locale;
    // The C locale compares bytes.
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

QString whyNotListed(const QString& folder) {
    const QFileInfo info(folder);
    if (!info.isDir())
        return "There is no such folder.";
    return info.isReadable() ? QString() : "You have no permission to read this folder.";
}

} // namespace

QString foldedWords(const QString& text) {
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

// One search: used by its thread, told by the main thread to end.
class FileSearch::Run final : public std::enable_shared_from_this<Run> {
public:
    Run(FileSearch& search, Where where) : search_(&search), where_(std::move(where)) {}

    void end() {
        const std::scoped_lock hold(lock_);
        search_ = nullptr;
        ended_ = true;
    }

    void operator()() {
        sincePart_.start();
        QString words = whyNotListed(where_.folder);
        if (words.isEmpty())
            listAll();
        if (count_ >= mostFiles)
            words = QString("Only the first %1 files are shown.").arg(mostFiles);
        passOn();
        tell([words](FileSearch& search) { emit search.ended(words); });
    }

private:
    // Folder by folder, the nearest first. A link to a folder is followed, each folder read once.
    void listAll() {
        QList<QString> folders{""};
        while (!folders.isEmpty() && !ended_ && count_ < mostFiles) {
            const QString folder = folders.takeFirst();
            QDirIterator each(where_.folder + "/" + folder,
                              QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot |
                                  (where_.hidden ? QDir::Hidden : QDir::Filters()));
            while (each.hasNext() && !ended_ && count_ < mostFiles) {
                each.next();
                look(each.fileInfo(), folder, folders);
            }
        }
    }

    void look(const QFileInfo& file, const QString& folder, QList<QString>& folders) {
        const bool isFolder = file.isDir();
        if (isFolder && where_.subfolders) {
            if (const QString real = file.canonicalFilePath(); !seen_.contains(real)) {
                seen_.insert(real);
                folders << (folder.isEmpty() ? "" : folder + "/") + file.fileName();
            }
            return;
        }
        if (!isFolder && !isWavName(file.fileName()))
            return;
        const QString name = file.fileName();
        part_ << FoundFile{name,
                           folder,
                           QDir::cleanPath(file.absoluteFilePath()),
                           isFolder,
                           file.lastModified().toMSecsSinceEpoch(),
                           foldedWords(folder.isEmpty() ? name : folder + " " + name),
                           collator_.sortKey(name)};
        ++count_;
        if (sincePart_.elapsed() >= interval_)
            passOn();
    }

    void passOn() {
        tell([part = std::exchange(part_, {})](FileSearch& search) { emit search.found(part); });
        interval_ = interval;
        sincePart_.start();
    }

    // Runs `action` on the main thread, unless the search has ended by then.
    template<class Action>
    void tell(Action action) {
        const std::scoped_lock hold(lock_);
        if (search_ == nullptr)
            return;
        const auto deliver = [run = shared_from_this(), action] {
            if (run->search_ != nullptr)
                action(*run->search_);
        };
        QMetaObject::invokeMethod(search_, deliver, Qt::QueuedConnection);
    }

    std::mutex lock_;
    FileSearch* search_; ///< written by the main thread alone; null when nobody listens any more
    std::atomic<bool> ended_ = false;
    const Where where_;
    const QCollator collator_ = makeCollator();
    QSet<QString> seen_; ///< the folders that were read, without links in their paths
    QList<FoundFile> part_;
    int count_ = 0;
    qint64 interval_ = firstInterval;
    QElapsedTimer sincePart_;
};

FileSearch::~FileSearch() {
    stop();
}

void FileSearch::start(const Where& where) {
    stop();
    run_ = std::make_shared<Run>(*this, where);
    // Detached, because a read from a disk that does not answer cannot be ended.
    std::thread([run = run_] { (*run)(); }).detach();
}

void FileSearch::stop() {
    if (run_)
        run_->end();
    run_.reset();
}

} // namespace cabslot
