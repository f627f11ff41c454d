#include "ui/SlotPicture.h"

#include "ui/IRWindow.h"
#include "ui/Look.h"
#include "ui/PicturePainter.h"

#include <QPainter>

#include <utility>

namespace cabslot {

namespace {

constexpr QSize pictureSize = {112, 34};
constexpr int room = 6; // around the waveform
constexpr double corner = 7;
constexpr double focusWidth = 2;

} // namespace

SlotPicture::SlotPicture(QWidget* parent) : QAbstractButton(parent) {
    setFixedSize(pictureSize);
    setEnabled(false);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setToolTip("Nothing was loaded since the program was started");
    setAccessibleDescription(toolTip());
    connect(this, &QAbstractButton::clicked, this, &SlotPicture::openView);
}

void SlotPicture::setSummary(IRSummary summary) {
    QString words = QString::fromStdString(summary.name + "; " + levelsText(summary.samples));
    for (const Finding& finding : summary.findings)
        words += "\n" + QString::fromStdString(finding.text);
    summary_ = std::move(summary);
    setToolTip(words);
    setAccessibleDescription(words);
    setEnabled(true);
    if (view_)
        view_->setSummary(slotName(), *summary_);
    update();
}

QString SlotPicture::slotName() const {
    return QString("User %1").arg(property("slot").toInt());
}

void SlotPicture::openView() {
    if (!summary_)
        return;
    if (!view_) {
        view_ = new IRWindow(*listening_, window());
        view_->setSummary(slotName(), *summary_);
    }
    view_->show();
    view_->raise();
    view_->activateWindow();
}

QSize SlotPicture::sizeHint() const {
    return pictureSize;
}

void SlotPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor text = palette().color(QPalette::Active, QPalette::WindowText);
    const QColor base = palette().color(QPalette::Active, QPalette::Base);
    const double inset = focusWidth / 2;
    const bool pointedAt = isEnabled() && underMouse();
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), focusWidth)
                              : QPen(Qt::NoPen));
    painter.setBrush(mixed(text, base, isDown() ? 0.16 : pointedAt ? 0.08 : 0.03));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), corner, corner);
    if (!summary_)
        return;
    painter.translate(room, room);
    paintPicture(painter, thumbnail(summary_->samples, width() - 2 * room, height() - 2 * room),
                 palette());
}

} // namespace cabslot
