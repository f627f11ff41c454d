// The window's two alerts. Both hang from its top edge, and the window is dimmed behind them.
// Main thread.
#pragma once

#include <QMessageBox>
#include <QString>

namespace cabslot {

/// An alert titled "Error" with one button. `reason` says in the program's own words what is
/// behind it; it may be empty. Not shown yet; `window` owns it.
QMessageBox* makeAlert(QWidget& window, const QString& detail, const QString& button,
                       const QString& reason);

/// Shows it as a sheet: modal for its window, not waited for. It deletes itself when closed.
void openSheet(QMessageBox& alert);

/// Shows it and waits until it is closed; the whole application takes nothing else meanwhile.
void runModal(QMessageBox& alert);

} // namespace cabslot
