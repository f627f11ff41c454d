#include "ui/UploadBar.h"

#include "device/DeviceCommands.h"
#include "ui/Look.h"

#include <QPainter>

#include <cmath>

namespace cabslot {

namespace {

constexpr int barHeight = 4;
constexpr double movingShare = 0.25;  // of the bar, for the part that moves to and fro
constexpr double movingPeriod = 1600; // ms, there and back

} // namespace

UploadBar::UploadBar(QWidget* parent) : QProgressBar(parent) {
    setRange(0, static_cast<int>(uploadFrameCount));
    setTextVisible(false);
    setFixedHeight(barHeight);
    QSizePolicy keepsItsPlace = sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    setSizePolicy(keepsItsPlace);
    showIdle();
}

void UploadBar::showFrame(unsigned frame) {
    waiting_.invalidate();
    setValue(static_cast<int>(frame));
    show();
}

void UploadBar::showWaiting() {
    if (!waiting_.isValid())
        waiting_.start();
    setValue(maximum());
    show();
    update();
}

void UploadBar::showIdle() {
    waiting_.invalidate();
    setValue(0);
    hide();
}

void UploadBar::paintEvent(QPaintEvent* /*event*/) {
    const Colours colours = coloursOf(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto part = [&](double from, double to, const QColor& colour) {
        painter.setBrush(colour);
        painter.drawRoundedRect(QRectF(from * width(), 0, (to - from) * width(), height()),
                                height() / 2.0, height() / 2.0);
    };
    part(0, 1, colours.edge);
    if (!waiting_.isValid())
        return part(0, value() / double(maximum()), colours.accent);
    const double phase = std::fmod(double(waiting_.elapsed()), movingPeriod) / movingPeriod;
    const double from = (1 - movingShare) * (1 - std::abs(2 * phase - 1));
    part(from, from + movingShare, colours.accent);
}

} // namespace cabslot
