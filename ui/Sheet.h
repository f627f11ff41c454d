// A sheet: a dialog in the middle of its window, with the window dimmed behind it. Main thread.
#pragma once

#include <QDialog>

class QLabel;

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

protected:
    /// A text of a fixed width in pixels; `role` chooses its look.
    static QLabel* makeText(const QString& text, const char* role, int width);

private:
    void hang();
};

} // namespace cabslot
