#include "ui/PathField.h"

#include "ui/Preview.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDir>
#include <QDirIterator>
#include <QKeyEvent>
#include <QStringListModel>
#include <QUrl>

namespace cabslot {

namespace {

constexpr qsizetype mostOffers = 2000;

bool isUpOrDown(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown;
}

} // namespace

PathField::PathField(QWidget* parent) : QLineEdit(parent), offers_(new QStringListModel(this)) {
    setObjectName("fileName");
    auto* completer = new QCompleter(offers_, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    setCompleter(completer);
    connect(this, &QLineEdit::textEdited, this, &PathField::offer);
}

void PathField::setFolder(const QString& folder) {
    folder_ = folder;
    offers_->setStringList({});
    offered_ = QString();
}

QString PathField::resolved(const QString& typed) const {
    if (typed.startsWith("file:"))
        return QUrl(typed).toLocalFile();
    const QString path = QDir::fromNativeSeparators(typed);
    if (path == "~" || path.startsWith("~/"))
        return QDir::homePath() + path.mid(1);
    return QDir(folder_).absoluteFilePath(path);
}

QString PathField::path() const {
    if (text().trimmed().isEmpty())
        return {};
    const QString path = resolved(text());
    return QDir::cleanPath(QFileInfo::exists(path) ? path : resolved(text().trimmed()));
}

// The names in the folder that is typed so far, read when another one is typed.
void PathField::offer(const QString& typed) {
    const qsizetype slash = QDir::fromNativeSeparators(typed).lastIndexOf('/');
    const QString before = typed.left(slash + 1);
    if (!offered_.isNull() && before == offered_)
        return;
    offered_ = before.isNull() ? "" : before;
    QStringList offers;
    QDirIterator each(resolved(before.isEmpty() ? "." : before),
                      QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot |
                          (hidden_ ? QDir::Hidden : QDir::Filters()));
    while (each.hasNext() && offers.size() < mostOffers) {
        each.next();
        const QFileInfo file = each.fileInfo();
        if (file.isDir() || isWavName(file.fileName()))
            offers << before + file.fileName() + (file.isDir() ? "/" : "");
    }
    offers.sort();
    offers_->setStringList(offers);
}

// The completer sends its keys here first, too: what is typed is entered even while it is open.
void PathField::keyPressEvent(QKeyEvent* event) {
    const bool offering = completer()->popup()->isVisible();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        completer()->popup()->hide();
        event->accept();
        emit entered();
    } else if (!offering && isUpOrDown(event->key())) {
        emit toList(event);
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace cabslot
