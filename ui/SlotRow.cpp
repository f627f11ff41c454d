#include "ui/SlotRow.h"

#include "ui/Look.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QMimeData>

namespace cabslot {

SlotRow::SlotRow(QWidget* parent) : QFrame(parent) {
    setProperty("role", "row");
    setAcceptDrops(true);
}

void SlotRow::dragEnterEvent(QDragEnterEvent* event) {
    if (!event->mimeData()->hasUrls())
        return;
    event->acceptProposedAction();
    setLook(*this, "target", true);
}

void SlotRow::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    setLook(*this, "target", false);
}

void SlotRow::dropEvent(QDropEvent* event) {
    setLook(*this, "target", false);
    event->acceptProposedAction();
    // Later, not now: the program that the files came from waits for this call to end.
    QMetaObject::invokeMethod(
        this, [this, files = event->mimeData()->urls()] { emit filesDropped(files); },
        Qt::QueuedConnection);
}

} // namespace cabslot
