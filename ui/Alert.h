// The window's alert, a sheet. Main thread.
#pragma once

#include "ui/Sheet.h"

#include <QString>

class QLabel;
class QPushButton;

namespace cabslot {

/// Titled "Error", in warning style, with one button that closes it.
class Alert final : public Sheet {
    Q_OBJECT
public:
    /// `detail` says what happened; `reason`, which may be empty, is the program's own explanation.
    Alert(QWidget& window, const QString& detail, const QString& button, const QString& reason);

    QString title() const;
    QString detail() const;
    QPushButton* button() const { return button_; }

private:
    QLabel* title_;
    QLabel* detail_;
    QPushButton* button_;
};

} // namespace cabslot
