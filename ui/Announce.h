// What screen readers are told that Qt does not tell them by itself. Main thread.
#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

namespace cabslot {

/// Has screen readers say `text`, which `source` shows. With a Qt before 6.8, which has no event
/// for that, only a source with the role of a notification is read aloud.
void announce(QWidget& source, const QString& text);

/// The role that assistive technology sees, in place of the one that follows from the class.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace cabslot
