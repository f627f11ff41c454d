// One slot's row in the window: its number, name, picture and two buttons. Files can be dropped on
// it. Main thread.
#pragma once

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

    /// 1 to 4; 0 until it is set, once. Gives the parts their names, tags and keys.
    int slot() const { return slot_; }
    void setSlot(int slot);

    QLabel* nameLabel() const { return name_; }
    SlotPicture* picture() const { return picture_; }
    QPushButton* addButton() const { return add_; }       ///< its tag is the slot's number
    QPushButton* deleteButton() const { return delete_; } ///< its tag is the slot's number + 4

    /// The line below the name: where its picture comes from. Empty: nothing is known.
    void setDetail(const QString& text);

    /// Whether the two buttons and drops are taken.
    void setReady(bool ready);

    /// Marks the row as the one that is being loaded.
    void setBusy(bool busy);

signals:
    /// Told after the drop is over. Whatever was dropped, not only what can be loaded.
    void filesDropped(QList<QUrl> files);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void layOut();

    int slot_ = 0;
    QLabel* number_;
    QLabel* name_;
    QLabel* detail_;
    SlotPicture* picture_;
    QPushButton* add_;
    QPushButton* delete_;
};

} // namespace cabslot
