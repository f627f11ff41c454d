#include "ui/Sheet.h"

#include "ui/Look.h"

#include <QPainter>

namespace cabslot {

namespace {

// Dims the window while a sheet is open; destroyed with it.
class Dimmer final : public QWidget {
public:
    explicit Dimmer(QWidget& window) : QWidget(&window) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(window.size());
        show();
        raise();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter(this).fillRect(rect(), coloursOf(palette()).dim);
    }
};

} // namespace

Sheet::Sheet(QWidget& window) : QDialog(&window, Qt::Dialog | Qt::FramelessWindowHint) {
    setAttribute(Qt::WA_DeleteOnClose);
    setProperty("role", "alert");
}

void Sheet::openAsSheet() {
    hang();
    open();
}

void Sheet::runModal() {
    setWindowModality(Qt::ApplicationModal);
    hang();
    exec();
}

void Sheet::hang() {
    QWidget& window = *parentWidget();
    auto* dimmer = new Dimmer(window);
    connect(this, &QDialog::finished, dimmer, &QObject::deleteLater);
    ensurePolished();
    adjustSize();
    move(window.mapToGlobal(QPoint((window.width() - width()) / 2, 0)));
}

} // namespace cabslot
