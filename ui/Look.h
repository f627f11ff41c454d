// How the window looks: one style sheet, its colours mixed from the desktop's palette.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

class QWidget;

namespace cabslot {

/// `amount` (0 to 1) of `top` over `bottom`: how every shade here is made.
QColor mixed(const QColor& top, const QColor& bottom, qreal amount);

/// The sheet for the whole window. Widgets are told apart by their property "role": heading, card,
/// line, row, number, name, secondary (a button of less weight), status.
QString styleSheetFor(const QPalette& palette);

/// Sets a property that the sheet looks at (target, problem), and has it look again.
void setLook(QWidget& widget, const char* property, bool value);

QFont headingFont();
QFont nameFont(); ///< a fixed pitch: the names' columns are part of them

} // namespace cabslot
