// Makes the QApplication where there may be no display. Without one, Qt itself would print a dozen
// lines and abort. Each system has its own source file for it. Main thread, before any other runs.
#pragma once

#include <functional>

namespace cabslot {

/// Calls `makeApplication`, which makes the process's QApplication. Without a display, or with a
/// QT_QPA_PLATFORM that is not there, ends the process with status 1 and one line on standard
/// error. Any other message from Qt is printed when it has returned.
void startOnDisplay(const std::function<void()>& makeApplication);

} // namespace cabslot
