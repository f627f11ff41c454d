#include "ui/BusyWait.h"

#include "device/SharedState.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QWidget>
#include <QWindow>

#include <cstdio>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

constexpr auto refreshInterval = 40ms; // an upload frame is sent every 20 ms

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
    showProgress();
    pause_(pollPeriod);
    return true;
}

void BusyWait::showProgress() {
    if (isInportIR == 1) {
        progress_({step + 1, 0, closeRequested_});
        return;
    }
    if (!confirming_.isValid())
        confirming_.start();
    progress_({0, confirming_.elapsed() / 1000, closeRequested_});
}

bool BusyWait::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        // The event reaches the window's handle first, then the widget if the handle accepts it.
        if (watched == &window_ || watched == window_.windowHandle())
            closeRequested_ = true;
        event->ignore();
        return true;
    }
    if (watched->isWidgetType())
        return isInput(event->type()) && !watched->property(worksWhileBusy).toBool();
    return event->type() == QEvent::Shortcut;
}

void BusyWait::paintFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace cabslot
