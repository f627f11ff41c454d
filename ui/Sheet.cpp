#include "ui/Sheet.h"

#include "ui/Look.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QWindow>

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
    // A click on the window that it blocks takes the keyboard away from it.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* focused) {
        if (isVisible() && focused == parentWidget()->windowHandle())
            QTimer::singleShot(0, this, &QWidget::activateWindow);
    });
}

QLabel* Sheet::makeText(const QString& text, const char* role, int width) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(width);
    label->setProperty("role", role);
    return label;
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
    connect(this, &QDialog::finished, dimmer, [dimmer] {
        dimmer->hide(); // at once: what the sheet begins may take long
        dimmer->deleteLater();
    });
    ensurePolished();
    adjustSize();
    move(window.mapToGlobal(window.rect().center()) - rect().center());
}

} // namespace cabslot
