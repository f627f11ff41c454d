#include "ui/IRWindow.h"

#include "irfile/NameField.h"
#include "ui/IRView.h"
#include "ui/ListenBar.h"
#include "ui/SlotContent.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <utility>

namespace cabslot {

namespace {

constexpr int margin = 24;
constexpr int spacing = 12;
constexpr QSize firstSize = {860, 680};
constexpr int historyWidth = 210;
constexpr double screenShare = 0.9; // leaves space for the window's frame

bool isListenKey(const QKeyEvent& event) {
    return event.key() == Qt::Key_L || event.key() == Qt::Key_Space;
}

// Such as "Cab", and below it "3 May, 14:05".
QString rowText(const SlotRecord& record, bool isNow) {
    const QString name = QString::fromStdString(nameText(record.ir.name));
    const QDateTime time = QDateTime::fromSecsSinceEpoch(record.time.time_since_epoch().count());
    return (record.isClear() ? "Cleared" : name) + (isNow ? " (now)" : "") + "\n" + dayOf(record) +
           ", " + time.toString("hh:mm") + (record.confirmed ? "" : ", not confirmed");
}

} // namespace

IRWindow::IRWindow(Listening& listening, QWidget* parent)
    : QDialog(parent), ir_(new IRView), listen_(new ListenBar(listening)), earlier_(makeHistory()) {
    setAttribute(Qt::WA_DeleteOnClose);
    auto* columns = new QHBoxLayout(this);
    columns->setContentsMargins(margin, margin, margin, margin);
    columns->setSpacing(margin);
    auto* shown = new QVBoxLayout;
    shown->setSpacing(spacing);
    shown->addWidget(ir_, 1);
    shown->addWidget(listen_);
    columns->addLayout(shown, 1);
    columns->addWidget(earlier_);
    resize(firstSize.boundedTo(screen()->availableSize() * screenShare));
}

QWidget* IRWindow::makeHistory() {
    auto* column = new QWidget;
    column->setFixedWidth(historyWidth);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins({});
    layout->setSpacing(spacing);
    auto* title = new QLabel("&Earlier in this slot");
    list_ = new QListWidget;
    list_->setObjectName("earlier");
    list_->setAccessibleName("Earlier in this slot");
    list_->installEventFilter(this);
    title->setBuddy(list_);
    again_ = new QPushButton("Load &again");
    again_->setObjectName("loadAgain");
    again_->setAutoDefault(false);
    layout->addWidget(title);
    layout->addWidget(list_, 1);
    layout->addWidget(again_, 0, Qt::AlignLeft);
    connect(list_, &QListWidget::currentRowChanged, this, &IRWindow::showSelected);
    connect(again_, &QPushButton::clicked, this, [this] {
        // A copy: loading it replaces the list.
        const SlotRecord chosen = history_.at(static_cast<std::size_t>(list_->currentRow()));
        emit loadAgain(chosen);
    });
    return column;
}

void IRWindow::showSlot(const QString& slot, const IRSummary& summary,
                        std::vector<SlotRecord> history) {
    now_ = summary;
    history_ = std::move(history);
    setWindowTitle(slot + ": " + QString::fromStdString(summary.name));
    list_->clear();
    for (const SlotRecord& record : history_)
        list_->addItem(rowText(record, isNow(record)));
    earlier_->setVisible(!history_.empty());
    showSelected(-1);
}

// Without a selection, what the slot holds.
void IRWindow::showSelected(int row) {
    const SlotRecord* const record =
        row < 0 ? nullptr : &history_.at(static_cast<std::size_t>(row));
    const IRSummary shown =
        record == nullptr || isNow(*record) ? now_ : *contentOf(*record).summary;
    ir_->showIR(shown);
    listen_->setIR(shown.samples);
    updateButton();
}

bool IRWindow::isNow(const SlotRecord& record) const {
    return nameText(record.ir.name) == now_.name && samplesOf(record.ir.block) == now_.samples;
}

void IRWindow::setReady(bool ready) {
    ready_ = ready;
    updateButton();
}

void IRWindow::updateButton() {
    again_->setEnabled(ready_ && list_->currentRow() >= 0);
}

bool IRWindow::takeKey(const QKeyEvent& event) {
    if (isListenKey(event))
        listen_->toggle();
    else if (event.key() == Qt::Key_Left)
        emit stepped(-1);
    else if (event.key() == Qt::Key_Right)
        emit stepped(1);
    else
        return false;
    return true;
}

bool IRWindow::eventFilter(QObject* watched, QEvent* event) {
    return (watched == list_ && event->type() == QEvent::KeyPress &&
            takeKey(static_cast<const QKeyEvent&>(*event))) ||
           QDialog::eventFilter(watched, event);
}

void IRWindow::keyPressEvent(QKeyEvent* event) {
    if (!takeKey(*event))
        QDialog::keyPressEvent(event);
}

} // namespace cabslot
