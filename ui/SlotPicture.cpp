#include "ui/SlotPicture.h"

#include "ui/IRWindow.h"
#include "ui/Look.h"
#include "ui/PicturePainter.h"
#include "ui/Words.h"

#include <QPainter>

#include <utility>

namespace cabslot {

namespace {

constexpr QSize pictureSize = {112, 34};
constexpr int margin = 6; // pixels around the waveform
constexpr double corner = 7;
constexpr double focusWidth = 2;

} // namespace

SlotPicture::SlotPicture(QWidget* parent) : QAbstractButton(parent) {
    setFixedSize(pictureSize);
    setFocusPolicy(Qt::TabFocus); // shows the focus only to keyboard users
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::clicked, this, &SlotPicture::openView);
    clear();
}

void SlotPicture::clear() {
    summary_.reset();
    setToolTip("Nothing was loaded from here, and the pedal cannot be asked what it holds");
    setAccessibleDescription(toolTip());
    setEnabled(false);
    update();
}

void SlotPicture::setSummary(IRSummary summary) {
    QString words = QString::fromStdString(summary.name + "; " + levelsText(summary.samples));
    for (const Finding& finding : summary.findings)
        words += "\n" + QString::fromStdString(finding.text);
    summary_ = std::move(summary);
    setToolTip(toolTipOf(words));
    setAccessibleDescription(words);
    setEnabled(true);
    if (view_)
        view_->showSlot(slotName_, *summary_, history_());
    update();
}

void SlotPicture::setUp(Listening& listening, History history) {
    listening_ = &listening;
    history_ = std::move(history);
}

void SlotPicture::setReady(bool ready) {
    ready_ = ready;
    if (view_)
        view_->setReady(ready);
}

void SlotPicture::setSlotName(const QString& name) {
    slotName_ = name;
    setAccessibleName("Waveform of " + name);
}

void SlotPicture::openView() {
    if (!summary_)
        return;
    if (!view_)
        use(*new IRWindow(*listening_, window()));
    view_->show();
    view_->raise();
    view_->activateWindow();
}

void SlotPicture::use(IRWindow& view) {
    view_ = &view;
    connect(view_, &IRWindow::loadAgain, this, &SlotPicture::loadAgain);
    connect(view_, &IRWindow::stepped, this, &SlotPicture::stepped);
    view_->setReady(ready_);
    view_->showSlot(slotName_, *summary_, history_());
}

void SlotPicture::takeView(SlotPicture& other) {
    if (!summary_ || view_ || !other.view_)
        return openView();
    IRWindow& view = *other.view_;
    view.disconnect(&other);
    other.view_ = nullptr;
    use(view);
}

QSize SlotPicture::sizeHint() const {
    return pictureSize;
}

void SlotPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Colours colours = coloursOf(palette());
    if (!summary_) {
        painter.setFont(detailFont());
        painter.setPen(colours.muted);
        painter.drawText(rect(), Qt::AlignCenter, "No picture yet");
        return;
    }
    const double inset = focusWidth / 2;
    painter.setPen(hasFocus() ? QPen(colours.accent, focusWidth) : QPen(Qt::NoPen));
    painter.setBrush(isDown() ? colours.pressed : underMouse() ? colours.hover : colours.button);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), corner, corner);
    painter.translate(margin, margin);
    paintPicture(painter, thumbnail(summary_->samples, width() - 2 * margin, height() - 2 * margin),
                 palette());
}

} // namespace cabslot
