// The window's style: one style sheet with colours mixed from the desktop's palette.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

class QWidget;

namespace cabslot {

/// The window's colours by name, mixed from the desktop's palette.
struct Colours {
    QColor window; ///< behind everything
    QColor base;   ///< behind the rows and in pictures
    QColor text;
    QColor muted;    ///< less important text
    QColor disabled; ///< text of disabled controls
    QColor problem;  ///< error text
    QColor line;     ///< between rows, and a plot's grid
    QColor frame;    ///< around a plot
    QColor edge;     ///< around buttons and the card
    QColor hover;    ///< control under the pointer
    QColor pressed;
    QColor button;
    QColor accent;   ///< the desktop's highlight: signals, progress, focus
    QColor other;    ///< a second curve beside the accent's
    QColor third;    ///< a third one
    QColor selected; ///< the accent under white text
    QColor tint;     ///< a little of the accent over the base
    QColor dim;      ///< over the window while a sheet is open; translucent
};
Colours coloursOf(const QPalette& palette);

/// The style sheet for the whole window. It selects widgets by their property "role": heading,
/// card, line, row, number, name, detail, secondary (a less important button), inline (a button in
/// a line of text), status, reason (in a sheet).
QString styleSheetFor(const QPalette& palette);

/// Sets a property used by the style sheet (target, busy, problem) and restyles the widget.
void setLook(QWidget& widget, const char* property, bool value);

QFont nameFont();   ///< fixed pitch: names are laid out in columns
QFont detailFont(); ///< smaller than the desktop's

} // namespace cabslot
