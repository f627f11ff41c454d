#include "ui/Alert.h"

#include "ui/Look.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

namespace cabslot {

namespace {

constexpr int textWidth = 360;
constexpr int iconSize = 40;

// Dims the window while an alert is open; destroyed with the alert.
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

QLabel* makeText(const QString& text, const char* role) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    label->setProperty("role", role);
    return label;
}

} // namespace

Alert::Alert(QWidget& window, const QString& detail, const QString& button, const QString& reason)
    : QDialog(&window, Qt::Dialog | Qt::FramelessWindowHint),
      title_(makeText("Error", "alertTitle")), detail_(makeText(detail, "alertDetail")),
      button_(new QPushButton(button)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setProperty("role", "alert");
    auto* icon = new QLabel;
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(24, 20, 24, 18);
    grid->setHorizontalSpacing(18);
    grid->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(title_, 0, 1);
    grid->addWidget(detail_, 1, 1);
    if (!reason.isEmpty())
        grid->addWidget(makeText(reason, "reason"), 2, 1);
    grid->setRowMinimumHeight(3, 8);
    grid->addWidget(button_, 4, 1, Qt::AlignRight);
    button_->setDefault(true);
    connect(button_, &QPushButton::clicked, this, &QDialog::reject);
}

QString Alert::title() const {
    return title_->text();
}

QString Alert::detail() const {
    return detail_->text();
}

void Alert::openAsSheet() {
    hang();
    open();
}

void Alert::runModal() {
    setWindowModality(Qt::ApplicationModal);
    hang();
    exec();
}

void Alert::hang() {
    QWidget& window = *parentWidget();
    auto* dimmer = new Dimmer(window);
    connect(this, &QDialog::finished, dimmer, &QObject::deleteLater);
    ensurePolished();
    adjustSize();
    move(window.mapToGlobal(QPoint((window.width() - width()) / 2, 0)));
}

} // namespace cabslot
