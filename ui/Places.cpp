#include "ui/Places.h"

#include "ui/Glyphs.h"
#include "ui/Settings.h"
#include "ui/Words.h"

#include <QDir>
#include <QSettings>
#include <QStandardItemModel>
#include <QStandardPaths>
#include <QStorageInfo>

namespace cabslot {

namespace {

const QString recentKey = QStringLiteral("openPanel/recentFolders");
constexpr qsizetype mostRecent = 5;
constexpr int pathRole = Qt::UserRole;

QStringList recentFolders() {
    return QSettings().value(recentKey).toStringList();
}

// Where desktops mount what a user plugs in.
bool isPluggedIn(const QString& disk) {
    return disk.startsWith("/media/") || disk.startsWith("/run/media/");
}

QString nameOf(const QString& folder) {
    const QString name = QDir(folder).dirName();
    return visible(name.isEmpty() ? QDir::toNativeSeparators(folder) : name);
}

} // namespace

Places::Places(const QStringList& slotFolders, QWidget* parent)
    : RowList(parent), model_(new QStandardItemModel(this)) {
    setObjectName("places");
    setAccessibleName("Places");
    setModel(model_);
    addFolder(QDir::homePath(), "Home");
    using Standard = QStandardPaths;
    for (const auto place : {Standard::DesktopLocation, Standard::DocumentsLocation,
                             Standard::DownloadLocation, Standard::MusicLocation})
        addFolder(Standard::writableLocation(place), Standard::displayName(place));
    for (const QFileInfo& drive : QDir::drives())
        addFolder(drive.path(), drive.path() == "/" ? "Computer" : QString());
    for (const QStorageInfo& disk : QStorageInfo::mountedVolumes()) {
        if (isPluggedIn(disk.rootPath()))
            addFolder(disk.rootPath(), visible(disk.displayName()));
    }
    addFolders("In the slots", slotFolders);
    addFolders("Recent", recentFolders());
    const auto enter = [this](const QModelIndex& index) {
        if (const QString folder = index.data(pathRole).toString(); !folder.isEmpty())
            emit chosen(folder);
    };
    connect(this, &RowList::entered, this, enter);
    connect(this, &RowList::clicked, this, enter);
}

void Places::addFolders(const QString& title, const QStringList& folders) {
    if (folders.isEmpty())
        return;
    auto* item = new QStandardItem(title);
    item->setFlags(Qt::NoItemFlags);
    item->setData(true, isTitleRole);
    model_->appendRow(item);
    const int rows = model_->rowCount();
    for (const QString& folder : folders)
        addFolder(folder);
    if (model_->rowCount() == rows)
        model_->removeRow(rows - 1);
}

// Each folder once.
void Places::addFolder(const QString& folder, const QString& name) {
    const QString path = QDir::cleanPath(folder);
    const bool isThere =
        !model_->match(model_->index(0, 0), pathRole, path, 1, Qt::MatchExactly).isEmpty();
    if (folder.isEmpty() || isThere || !QFileInfo(path).isDir())
        return;
    auto* item = new QStandardItem(glyphIcon(Glyph::folder), name.isEmpty() ? nameOf(path) : name);
    item->setData(path, pathRole);
    item->setToolTip(toolTipOf(visible(QDir::toNativeSeparators(path))));
    item->setAccessibleDescription(visible(QDir::toNativeSeparators(path)));
    model_->appendRow(item);
}

void Places::showFolder(const QString& folder) {
    const QModelIndexList found =
        model_->match(model_->index(0, 0), pathRole, folder, 1, Qt::MatchExactly);
    if (found.isEmpty())
        selectionModel()->clear();
    else
        setCurrentIndex(found.first());
}

void Places::addRecent(const QString& folder) {
    QStringList folders = recentFolders();
    folders.removeAll(folder);
    folders.prepend(folder);
    storeSetting(recentKey, QStringList(folders.mid(0, mostRecent)));
}

} // namespace cabslot
