// One slot's row in the window; files can be dropped on it.
#pragma once

#include <QFrame>
#include <QList>
#include <QUrl>

namespace cabslot {

class SlotRow final : public QFrame {
    Q_OBJECT
public:
    explicit SlotRow(QWidget* parent = nullptr);

signals:
    /// Told after the drop is over. Whatever was dropped, not only what can be loaded.
    void filesDropped(QList<QUrl> files);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
};

} // namespace cabslot
