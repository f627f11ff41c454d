// A sheet: a dialog in the middle of its window, with the window dimmed behind it. Main thread.
#pragma once

#include <QDialog>

namespace cabslot {

/// Modal for its window. Deletes itself when closed.
class Sheet : public QDialog {
    Q_OBJECT
public:
    explicit Sheet(QWidget& window);

    /// Shows it and returns.
    void openAsSheet();

    /// Shows it and waits until it is closed; meanwhile it blocks the whole application.
    void runModal();

private:
    void hang();
};

} // namespace cabslot
