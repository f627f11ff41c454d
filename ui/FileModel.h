// The rows of the file list: folders first, then WAV files, sorted, and only those whose name or
// subfolder has all words of the filter. Main thread.
#pragma once

#include "ui/FileSearch.h"

#include <QAbstractListModel>
#include <QStringList>

#include <vector>

namespace cabslot {

class FileModel final : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        pathRole = Qt::UserRole,
        isFolderRole, ///< bool
    };
    enum class Order { byName, newestFirst };

    using QAbstractListModel::QAbstractListModel;

    void setFiles(const QList<FoundFile>& files); ///< instead of those before
    void add(const QList<FoundFile>& files);
    void setFilter(const QString& text); ///< words in any order, any case, separated by blanks
    void setOrder(Order order);

    QModelIndex indexOf(const QString& path) const; ///< invalid if it is not shown

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    bool comesBefore(const FoundFile& left, const FoundFile& right) const;
    void sortFrom(qsizetype first);
    void select();

    QList<FoundFile> files_;
    std::vector<qsizetype> shown_; ///< places in files_
    QStringList words_;
    Order order_ = Order::byName;
};

} // namespace cabslot
