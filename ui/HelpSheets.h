// The sheets of the menu about the program. Each is a window of its own that blocks nothing and
// deletes itself when it is closed. Main thread.
#pragma once

class QWidget;

namespace cabslot {

void showKeys(QWidget& window);  ///< the keys of the window, the panel and the larger view
void showAbout(QWidget& window); ///< version, licence, and where the state is kept

} // namespace cabslot
