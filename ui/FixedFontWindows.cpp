#include "ui/FixedFont.h"

namespace cabslot {

// What Windows names as its fixed font is a typewriter's, too thin to be read beside the others.
QFont fixedFont() {
    QFont font("Consolas");
    font.setStyleHint(QFont::TypeWriter); // where it is missing
    return font;
}

} // namespace cabslot
