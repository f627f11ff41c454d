// The window's few icons, drawn in the text colour: sharp at any scale and visible on any
// desktop.
#pragma once

#include <QIcon>

namespace cabslot {

enum class Glyph { load, close, minimise, menu, finding, folder, wave, back, forward, up };

QIcon glyphIcon(Glyph glyph);

} // namespace cabslot
