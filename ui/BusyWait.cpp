#include "ui/BusyWait.h"

#include "device/SendScheduler.h"
#include "device/SharedState.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto refreshInterval = 2 * uploadFramePeriod;

// User input as it reaches a widget. It is stopped there, not at the window, so that a single
// widget can be let through.
bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

BusyWait::BusyWait(const QWidget& window, Pause pause, Progress progress, Counter counter)
    : window_(window), pause_(std::move(pause)), progress_(std::move(progress)), counter_(counter) {
    if (!pause_)
        pause_ = [this](std::chrono::milliseconds time) { waitInLoop(time); };
    QCoreApplication::instance()->installEventFilter(this);
    connect(&refresh_, &QTimer::timeout, this, &BusyWait::showProgress);
    refresh_.start(refreshInterval);
}

BusyWait::~BusyWait() {
    QCoreApplication::instance()->removeEventFilter(this);
}

bool BusyWait::waitForUpload() {
    showProgress();
    pause_(pollPeriod);
    return true;
}

bool BusyWait::waitForConfirmation(std::uint32_t poll) {
    if (counter_ == Counter::aloud) {
        std::printf("%u\n", poll);
        std::fflush(stdout);
    }
    waiting_ = poll * pollPeriod;
    showProgress();
    pause_(pollPeriod);
    waiting_ += pollPeriod;
    return true;
}

// A request to close leaves the pedal the time of one poll: it confirms sooner than that, or late.
bool BusyWait::isEnough() {
    return stopped_ || (closeRequested_ && waiting_ > 0s);
}

void BusyWait::stop() {
    if (!state().mayStop)
        return;
    stopped_ = true;
    loop_.quit();
}

BusyWait::State BusyWait::state() const {
    const bool sending = isInportIR == 1;
    const bool gone = isDeviceConnent == 0;
    return {.frame = sending ? step + 1 : 0,
            .waiting = waiting_,
            .pedalGone = gone,
            .closing = closeRequested_,
            .mayStop = gone || waiting_ >= patience};
}

void BusyWait::showProgress() {
    progress_(state());
}

bool BusyWait::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        // The event reaches the window's handle first, then the widget if the handle accepts it.
        if (watched == &window_ || watched == window_.windowHandle())
            closeRequested_ = true;
        event->ignore();
        return true;
    }
    if (isStopKey(*watched, *event))
        stop();
    if (watched->isWidgetType())
        return isInput(event->type()) && !watched->property(worksWhileBusy).toBool();
    return event->type() == QEvent::Shortcut;
}

bool BusyWait::isStopKey(const QObject& watched, const QEvent& event) const {
    return event.type() == QEvent::KeyPress && watched.isWidgetType() &&
           static_cast<const QWidget&>(watched).window() == &window_ &&
           static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

void BusyWait::waitInLoop(std::chrono::milliseconds time) {
    QTimer end; // gone when stop() has ended the loop sooner
    end.setSingleShot(true);
    connect(&end, &QTimer::timeout, &loop_, &QEventLoop::quit);
    end.start(time);
    loop_.exec();
}

} // namespace cabslot
