// How the window looks: one style sheet, its colours mixed from the desktop's palette.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

class QWidget;

namespace cabslot {

/// Every colour of the window by its name, mixed from the desktop's palette.
struct Colours {
    QColor window; ///< behind everything
    QColor base;   ///< behind the rows and in pictures
    QColor text;
    QColor muted;    ///< text of less weight
    QColor disabled; ///< text of what cannot be pressed
    QColor problem;  ///< text that says what is wrong
    QColor line;     ///< between rows, and a plot's grid
    QColor frame;    ///< around a plot
    QColor edge;     ///< around buttons and the card
    QColor hover;    ///< under the pointer
    QColor pressed;
    QColor button;
    QColor accent; ///< the desktop's highlight: signals, progress, focus
    QColor tint;   ///< a little of the accent over the base
    QColor dim;    ///< over the window while a sheet is open; translucent
};
Colours coloursOf(const QPalette& palette);

/// The sheet for the whole window. Widgets are told apart by their property "role": heading, card,
/// line, row, number, name, detail, secondary (a button of less weight), status, reason (in a
/// sheet).
QString styleSheetFor(const QPalette& palette);

/// Sets a property that the sheet looks at (target, busy, problem), and has it look again.
void setLook(QWidget& widget, const char* property, bool value);

QFont nameFont();   ///< a fixed pitch: the names' columns are part of them
QFont detailFont(); ///< smaller than the desktop's

} // namespace cabslot
