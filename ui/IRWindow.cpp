#include "ui/IRWindow.h"

#include "ui/IRView.h"
#include "ui/ListenBar.h"

#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

namespace cabslot {

namespace {

constexpr int margin = 24;
constexpr int spacing = 12;
constexpr QSize firstSize = {680, 680};
constexpr double screenShare = 0.9; // leaves space for the window's frame

} // namespace

IRWindow::IRWindow(Listening& listening, QWidget* parent)
    : QDialog(parent), ir_(new IRView), listen_(new ListenBar(listening)) {
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    layout->addWidget(ir_, 1);
    layout->addWidget(listen_);
    resize(firstSize.boundedTo(screen()->availableSize() * screenShare));
}

void IRWindow::setSummary(const QString& slot, const IRSummary& summary) {
    setWindowTitle(slot + ": " + QString::fromStdString(summary.name));
    ir_->showIR(summary);
    listen_->setIR(summary.samples);
}

void IRWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_L || event->key() == Qt::Key_Space)
        listen_->toggle();
    else
        QDialog::keyPressEvent(event);
}

} // namespace cabslot
