// Above the file list: where it is, the ways to other folders, and what of the folder is shown.
// Main thread.
#pragma once

#include "ui/FileModel.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace cabslot {

class FolderBar final : public QWidget {
    Q_OBJECT
public:
    explicit FolderBar(QWidget* parent = nullptr);

    void setFolder(const QString& folder, bool hasBack, bool hasForward);
    bool withSubfolders() const;
    FileModel::Order order() const;
    QLineEdit* filter() const { return filter_; }
    QList<QWidget*> tabOrder() const; ///< the filter and what follows it, then the buttons

signals:
    void back();
    void forward();
    void up();
    void filtered(const QString& text);
    void entersList(); ///< from the filter, by Return or an arrow key down
    void subfoldersChanged();
    void orderChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void elide();

    QToolButton* back_;
    QToolButton* forward_;
    QToolButton* up_;
    QLabel* where_;
    QLineEdit* filter_;
    QCheckBox* subfolders_;
    QComboBox* order_;
    QString folder_; ///< as it is shown
};

} // namespace cabslot
