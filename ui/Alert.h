// The window's alert: it hangs from the window's top edge, and the window is dimmed behind it.
// Main thread.
#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QPushButton;

namespace cabslot {

/// Titled "Error", in warning style, with one button that closes it. Deletes itself when closed.
class Alert final : public QDialog {
    Q_OBJECT
public:
    /// `detail` says what happened, `reason`, which may be empty, what is behind it in the
    /// program's own words.
    Alert(QWidget& window, const QString& detail, const QString& button, const QString& reason);

    QString title() const;
    QString detail() const;
    QPushButton* button() const { return button_; }

    /// Shows it as a sheet: modal for its window, not waited for.
    void openAsSheet();

    /// Shows it and waits until it is closed; the whole application takes nothing else meanwhile.
    void runModal();

private:
    void hang();

    QLabel* title_;
    QLabel* detail_;
    QPushButton* button_;
};

} // namespace cabslot
