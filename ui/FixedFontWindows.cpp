#include "ui/FixedFont.h"

namespace cabslot {

// Windows' own fixed font, a typewriter's, is too thin to read next to the other fonts.
QFont fixedFont() {
    QFont font("Consolas");
    font.setStyleHint(QFont::TypeWriter); // if Consolas is missing
    return font;
}

} // namespace cabslot
