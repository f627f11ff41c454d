// The panel's sidebar: the user's usual folders and disks, the folders of what is in the slots, and
// those that files were lately chosen from. Main thread.
#pragma once

#include "ui/RowList.h"

#include <QStringList>

class QStandardItemModel;

namespace cabslot {

class Places final : public RowList {
    Q_OBJECT
public:
    /// `slotFolders` are those of what is in the slots.
    explicit Places(const QStringList& slotFolders, QWidget* parent = nullptr);

    void showFolder(const QString& folder); ///< selects it, if it is one of the places

    /// Remembers a folder that a file was chosen from, for this and later runs.
    static void addRecent(const QString& folder);

signals:
    void chosen(const QString& folder);

private:
    void addFolders(const QString& title, const QStringList& folders);
    void addFolder(const QString& folder, const QString& name = {});

    QStandardItemModel* model_;
};

} // namespace cabslot
