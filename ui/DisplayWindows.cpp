#include "ui/Display.h"

namespace cabslot {

void startOnDisplay(const std::function<void()>& makeApplication) {
    makeApplication(); // every session has a display
}

} // namespace cabslot
