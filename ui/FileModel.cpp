#include "ui/FileModel.h"

#include "ui/Glyphs.h"
#include "ui/RowList.h"
#include "ui/Words.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace cabslot {

namespace {

QString dayOf(const FoundFile& file) {
    return QLocale::c().toString(QDateTime::fromMSecsSinceEpoch(file.modified).date(),
                                 "d MMM yyyy");
}

} // namespace

void FileModel::setFiles(const QList<FoundFile>& files) {
    beginResetModel();
    files_ = files;
    sortFrom(0);
    select();
    endResetModel();
}

void FileModel::add(const QList<FoundFile>& files) {
    if (files.isEmpty())
        return;
    beginResetModel();
    const qsizetype sorted = files_.size();
    files_ += files;
    sortFrom(sorted);
    select();
    endResetModel();
}

void FileModel::setFilter(const QString& text) {
    beginResetModel();
    words_ = foldedWords(text).split(' ', Qt::SkipEmptyParts);
    select();
    endResetModel();
}

void FileModel::setOrder(Order order) {
    beginResetModel();
    order_ = order;
    sortFrom(0);
    select();
    endResetModel();
}

// The files before `first` are sorted already.
void FileModel::sortFrom(qsizetype first) {
    const auto before = [this](const FoundFile& left, const FoundFile& right) {
        return comesBefore(left, right);
    };
    std::sort(files_.begin() + first, files_.end(), before);
    std::inplace_merge(files_.begin(), files_.begin() + first, files_.end(), before);
}

bool FileModel::comesBefore(const FoundFile& left, const FoundFile& right) const {
    if (left.isFolder != right.isFolder)
        return left.isFolder;
    if (order_ == Order::newestFirst && !left.isFolder && left.modified != right.modified)
        return left.modified > right.modified;
    const int names = left.key.compare(right.key);
    return names != 0 ? names < 0 : left.path < right.path;
}

void FileModel::select() {
    shown_.clear();
    for (qsizetype i = 0; i < files_.size(); ++i) {
        if (std::ranges::all_of(
                words_, [&](const QString& word) { return files_[i].words.contains(word); }))
            shown_.push_back(i);
    }
}

QModelIndex FileModel::indexOf(const QString& path) const {
    const auto at =
        std::ranges::find_if(shown_, [&](qsizetype place) { return files_[place].path == path; });
    return at == shown_.end() ? QModelIndex() : index(static_cast<int>(at - shown_.begin()));
}

int FileModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant FileModel::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= rowCount())
        return {};
    const FoundFile& file = files_[shown_[static_cast<std::size_t>(index.row())]];
    switch (role) {
    case Qt::DisplayRole:
        return visible(file.name);
    case Qt::DecorationRole:
        return glyphIcon(file.isFolder ? Glyph::folder : Glyph::wave);
    case Qt::ToolTipRole:
        return toolTipOf(visible(file.path) + "\n" + dayOf(file));
    case Qt::AccessibleDescriptionRole:
        return file.isFolder ? QString("Folder") : visible(file.folder);
    case RowList::detailRole:
        if (order_ == Order::newestFirst && !file.isFolder)
            return dayOf(file) + (file.folder.isEmpty() ? "" : ", " + visible(file.folder));
        return visible(file.folder);
    case pathRole:
        return file.path;
    case isFolderRole:
        return file.isFolder;
    default:
        return {};
    }
}

} // namespace cabslot
