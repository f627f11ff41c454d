// One slot's row in the window: its number, name, picture and two buttons. It accepts dropped
// files. Main thread.
#pragma once

#include "ui/SlotContent.h"

#include <QFrame>
#include <QLabel>
#include <QList>
#include <QPushButton>
#include <QUrl>

namespace cabslot {

class SlotPicture;

class SlotRow final : public QFrame {
    Q_OBJECT
    Q_PROPERTY(int slot READ slot WRITE setSlot)
public:
    explicit SlotRow(QWidget* parent = nullptr);

    /// 1 to 4; 0 until it is set, once. Setting it names the widgets and sets their tags and keys.
    int slot() const { return slot_; }
    void setSlot(int slot);

    QLabel* nameLabel() const { return name_; }
    SlotPicture* picture() const { return picture_; }
    QPushButton* addButton() const { return add_; }       ///< its tag is the slot's number
    QPushButton* deleteButton() const { return delete_; } ///< its tag is the slot's number + 4

    /// Shows what is known of the slot's content: in a second line, with a mark if there is a
    /// finding, and as a picture.
    void showContent(const SlotContent& content);

    /// Enables or disables the two buttons and dropping.
    void setReady(bool ready);

    /// Marks the row as one that the files held over the window would go to.
    void setTarget(bool target);

    /// Tells assistive technology the name that the label shows.
    void describe();

    /// What is known of the content, and what was found in it, in words; may be empty.
    QString contentInWords() const;

    /// Marks the row as the one being loaded.
    void setBusy(bool busy);

signals:
    /// Emitted after the drop has ended. Contains everything dropped, not only loadable files.
    void filesDropped(QList<QUrl> files);

    /// So many files are held over the row; 0: no longer.
    void targeted(qsizetype files);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void layOut();
    void showLine(const SlotContent& content);

    int slot_ = 0;
    QLabel* number_;
    QLabel* name_;
    QLabel* mark_;
    QLabel* detail_;
    SlotPicture* picture_;
    QPushButton* add_;
    QPushButton* delete_;
};

} // namespace cabslot
