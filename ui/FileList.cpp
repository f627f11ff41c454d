#include "ui/FileList.h"

#include <QKeyEvent>

#include <utility>

namespace cabslot {

namespace {

// What a path begins with: "/usr", "~/irs", "\\server" and, after a letter, "C:".
bool beginsPath(const QString& typed) {
    return typed == "/" || typed == "~" || typed == "\\" || typed == ":";
}

} // namespace

FileList::FileList(QWidget* parent) : RowList(parent), model_(new FileModel(this)) {
    setObjectName("files");
    setAccessibleName("Files");
    setModel(model_);
    connect(&search_, &FileSearch::found, this, &FileList::take);
    connect(&search_, &FileSearch::ended, this, &FileList::end);
}

void FileList::list(const FileSearch::Where& where) {
    where_ = where;
    refreshes_ = false;
    wanted_.clear();
    selected_.clear();
    model_->setFiles({});
    setTwoLines(where.subfolders);
    setEmptyText("Looking…");
    search_.start(where);
}

void FileList::refresh() {
    refreshes_ = true;
    fresh_.clear();
    search_.start(where_);
}

void FileList::take(const QList<FoundFile>& files) {
    if (refreshes_) {
        fresh_ += files;
        return;
    }
    model_->add(files);
    keepSelection();
}

void FileList::end(const QString& words) {
    if (std::exchange(refreshes_, false))
        model_->setFiles(std::exchange(fresh_, {}));
    keepSelection();
    setEmptyText(!words.isEmpty()     ? words
                 : !filter_.isEmpty() ? "No name has all these words."
                                      : "There are no WAV files here.");
    emit listed(words);
}

void FileList::setFilter(const QString& text) {
    filter_ = text.trimmed();
    model_->setFilter(text);
    keepSelection();
    emit changed();
}

void FileList::setOrder(FileModel::Order order) {
    model_->setOrder(order);
    setTwoLines(where_.subfolders || order == FileModel::Order::newestFirst);
    keepSelection();
}

void FileList::selectPath(const QString& path) {
    wanted_ = path;
    keepSelection();
}

void FileList::selectFirst() {
    if (selected_.isEmpty() && model_->rowCount() > 0)
        setCurrentIndex(model_->index(0));
}

bool FileList::isFolderSelected() const {
    return !selected_.isEmpty() &&
           model_->indexOf(selected_).data(FileModel::isFolderRole).toBool();
}

void FileList::clearSelected() {
    wanted_.clear();
    selected_.clear();
    selectionModel()->clear();
}

// The model's rows were all replaced, which the selection does not survive by itself.
void FileList::keepSelection() {
    const QModelIndex wanted = wanted_.isEmpty() ? QModelIndex() : model_->indexOf(wanted_);
    if (wanted.isValid()) {
        wanted_.clear();
        setCurrentIndex(wanted);
    } else if (const QModelIndex again = model_->indexOf(selected_); again.isValid()) {
        setCurrentIndex(again);
    } else if (!selected_.isEmpty()) {
        selected_.clear();
        emit selected({});
    }
}

void FileList::selectionChanged(const QItemSelection& now, const QItemSelection& before) {
    RowList::selectionChanged(now, before);
    const QString path =
        now.isEmpty() ? QString() : now.indexes().first().data(FileModel::pathRole).toString();
    if (path.isEmpty() || path == selected_)
        return;
    selected_ = path;
    emit selected(path);
}

void FileList::keyPressEvent(QKeyEvent* event) {
    const QString before = std::exchange(typed_, event->text());
    const bool plain = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
    if (event->key() == Qt::Key_Backspace)
        emit leaves();
    else if (plain && event->key() == Qt::Key_Space)
        emit listens();
    else if (plain && beginsPath(event->text()))
        emit pathBegun(event->text() == ":" ? before + ":" : event->text());
    else
        RowList::keyPressEvent(event);
}

} // namespace cabslot
