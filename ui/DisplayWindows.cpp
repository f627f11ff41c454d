#include "ui/Display.h"

namespace cabslot {

bool hasDisplay() {
    return true; // every session has one
}

} // namespace cabslot
