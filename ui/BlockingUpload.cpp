#include "ui/BlockingUpload.h"

#include "device/DeviceCommands.h"
#include "ui/Listening.h"
#include "ui/MainQueue.h"
#include "ui/SlotRow.h"
#include "ui/StatusLine.h"
#include "ui/UploadBar.h"
#include "ui/Words.h"

#include <QGuiApplication>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <utility>

namespace cabslot {

namespace {

constexpr auto longestWait = confirmationPollLimit * pollPeriod;

// A lost pedal is only mentioned here: the alert appears when the upload has ended.
QString progressText(const BlockingUpload::Job& job, const BusyWait::State& state) {
    const QString slot = slotName(job.slot);
    const QString waited = QString("%1 s of at most %2 s.")
                               .arg(state.waiting.count())
                               .arg(std::chrono::seconds(longestWait).count());
    if (state.pedalGone)
        return QString("The pedal is gone. Still waiting for %1, %2").arg(slot, waited);
    if (state.frame == 0)
        return QString("%1 %2. Waiting for the pedal to confirm, %3")
            .arg(job.clears ? "Cleared" : "Sent to", slot, waited);
    return QString("Sending frame %1 of %2 to %3.")
        .arg(state.frame)
        .arg(uploadFrameCount)
        .arg(slot);
}

} // namespace

BlockingUpload::BlockingUpload(Parts parts) : parts_(std::move(parts)) {}

UploadResult BlockingUpload::run(const Job& job, const Upload& upload) {
    parts_.listening.stop(); // before the first report is sent
    QWidget* const window = parts_.view.window();
    const QPointer<QWidget> focus = window->focusWidget();
    BusyWait waiting(
        *window, parts_.pause, [&](const BusyWait::State& state) { showProgress(job, state); },
        job.counter);
    QObject::connect(parts_.status.stopButton(), &QPushButton::clicked, &waiting, &BusyWait::stop);
    parts_.queue.hold();
    setRunning(true, job.row);
    UploadResult result = upload(waiting);
    setRunning(false, job.row);
    parts_.queue.release();
    if (focus != nullptr)
        focus->setFocus();
    closeRequested_ = waiting.closeRequested();
    if (closeRequested_)
        QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
    return result;
}

void BlockingUpload::setRunning(bool running, SlotRow* row) {
    running_ = running;
    parts_.runningChanged();
    if (row != nullptr)
        row->setBusy(running);
    if (running) {
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
        parts_.bar.showIdle();
        parts_.status.stopButton()->hide();
    }
}

void BlockingUpload::showProgress(const Job& job, const BusyWait::State& state) {
    if (state.frame != 0)
        parts_.bar.showFrame(state.frame);
    else
        parts_.bar.showWaiting();
    parts_.status.stopButton()->setVisible(state.mayStop);
    const QString closing = state.closing ? " Closing when this is done." : "";
    parts_.status.say(job.series + progressText(job, state) + closing, state.pedalGone);
}

} // namespace cabslot
