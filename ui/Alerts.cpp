#include "ui/Alerts.h"

#include "ui/Look.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace cabslot {

namespace {

constexpr int textColumn = 2; // of a message box's grid; the icon stands before it

// Covers the window while an alert is open, and goes with it.
class Dimmer final : public QWidget {
public:
    explicit Dimmer(QWidget* window) : QWidget(window) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(window->size());
        show();
        raise();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter(this).fillRect(rect(), coloursOf(palette()).dim);
    }
};

void hang(QMessageBox& alert) {
    QWidget& window = *alert.parentWidget();
    auto* dimmer = new Dimmer(&window);
    QObject::connect(&alert, &QDialog::finished, dimmer, &QObject::deleteLater);
    alert.ensurePolished();
    alert.adjustSize();
    const int left = (window.width() - alert.width()) / 2;
    alert.move(window.mapToGlobal(QPoint(left, 0)));
}

} // namespace

QMessageBox* makeAlert(QWidget& window, const QString& detail, const QString& button,
                       const QString& reason) {
    auto* alert = new QMessageBox(&window);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    alert->setTextFormat(Qt::PlainText);
    alert->setIcon(QMessageBox::Warning);
    alert->setText("Error");
    alert->setInformativeText(detail);
    alert->addButton(button, QMessageBox::RejectRole);
    auto* grid = qobject_cast<QGridLayout*>(alert->layout());
    grid->setContentsMargins(24, 20, 24, 18);
    if (reason.isEmpty())
        return alert;
    auto* label = new QLabel(reason, alert);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setProperty("role", "reason");
    // Above the buttons, which are in the last row.
    const int last = grid->rowCount() - 1;
    if (QLayoutItem* buttons = grid->itemAtPosition(last, 0)) {
        grid->removeItem(buttons);
        grid->addItem(buttons, last + 1, 0, 1, -1);
    }
    grid->addWidget(label, last, textColumn);
    return alert;
}

void openSheet(QMessageBox& alert) {
    hang(alert);
    alert.open();
}

void runModal(QMessageBox& alert) {
    alert.setWindowModality(Qt::ApplicationModal);
    hang(alert);
    alert.exec();
}

} // namespace cabslot
