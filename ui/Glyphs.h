// The few icons of the window, drawn in the text's colour: sharp at any scale, right on any
// desktop.
#pragma once

#include <QIcon>

namespace cabslot {

enum class Glyph { load, close, minimise };

QIcon glyphIcon(Glyph glyph);

} // namespace cabslot
