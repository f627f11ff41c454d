// The window's alert: a sheet at the window's top edge, with the window dimmed behind it. Main
// thread.
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
    /// `detail` says what happened; `reason`, which may be empty, is the program's own explanation.
    Alert(QWidget& window, const QString& detail, const QString& button, const QString& reason);

    QString title() const;
    QString detail() const;
    QPushButton* button() const { return button_; }

    /// Shows it as a sheet, modal for its window, and returns.
    void openAsSheet();

    /// Shows it and waits until it is closed; meanwhile it blocks the whole application.
    void runModal();

private:
    void hang();

    QLabel* title_;
    QLabel* detail_;
    QPushButton* button_;
};

} // namespace cabslot
