// The list of a folder's subfolders and WAV files, or of those that were found below it. Keeps the
// selected path while rows come and go. Main thread.
#pragma once

#include "ui/FileModel.h"
#include "ui/RowList.h"

namespace cabslot {

class FileList final : public RowList {
    Q_OBJECT
public:
    explicit FileList(QWidget* parent = nullptr);

    void list(const FileSearch::Where& where); ///< from an empty list; selects nothing
    void refresh();                            ///< reads the same folder again, rows staying
    void setFilter(const QString& text);
    void setOrder(FileModel::Order order);

    /// Selects the row of that path now, or when it is found.
    void selectPath(const QString& path);
    void selectFirst(); ///< unless one is selected
    QString selectedPath() const { return selected_; }
    bool isFolderSelected() const;

    void clearSelected(); ///< without a signal

signals:
    void selected(const QString& path); ///< of a file or folder; empty: none any more
    void leaves();                      ///< to the folder above
    void listens();
    void pathBegun(const QString& text); ///< the first characters of a typed path
    void listed(const QString& words);   ///< all is there; `words` say if not
    void changed();                      ///< other rows are shown

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& now, const QItemSelection& before) override;

private:
    void take(const QList<FoundFile>& files);
    void end(const QString& words);
    void keepSelection();

    FileModel* model_;
    FileSearch search_;
    FileSearch::Where where_;
    QList<FoundFile> fresh_; ///< found by a refresh, until all are
    bool refreshes_ = false;
    QString selected_;
    QString wanted_; ///< to be selected when it is found
    QString filter_;
    QString typed_; ///< the character before
};

} // namespace cabslot
