#include "ui/SetDrops.h"

#include "ui/DroppedFiles.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

namespace cabslot {

SetDrops::SetDrops(QWidget& target) : QObject(&target) {
    target.setAcceptDrops(true);
    target.installEventFilter(this);
}

bool SetDrops::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
        return false;
    auto& drop = static_cast<QDropEvent&>(*event); // what a drag that enters is, too
    const QString path = setAmong(drop.mimeData()->urls());
    if (path.isEmpty())
        return false;
    drop.acceptProposedAction();
    if (event->type() == QEvent::Drop)
        QMetaObject::invokeMethod(
            this, [this, path] { emit dropped(path); }, Qt::QueuedConnection);
    return true;
}

} // namespace cabslot
