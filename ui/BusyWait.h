// How the window waits during a slot's upload: it blocks the caller but keeps painting. Input
// meanwhile is discarded; a request to close the window is remembered.
#pragma once

#include "upload/SlotUpload.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

class QWidget;

namespace cabslot {

class BusyWait final : public QObject, public UploadWait {
    Q_OBJECT
public:
    /// Waits this long; the window must keep painting meanwhile.
    using Pause = std::function<void(std::chrono::milliseconds)>;

    /// The upload's progress.
    struct State {
        unsigned frame;       ///< being sent, 1 to 7; 0 when all have been sent
        std::int64_t seconds; ///< spent waiting for the pedal's confirmation
        bool closing;         ///< closeRequested()
    };
    using Progress = std::function<void(const State& state)>;

    enum class Counter { silent, aloud };

    /// Remembers requests to close `window`. With the counter aloud, each poll for the confirmation
    /// prints its number on standard output.
    BusyWait(const QWidget& window, Pause pause, Progress progress, Counter counter);
    ~BusyWait() override;

    bool waitForUpload() override;
    bool waitForConfirmation(std::uint32_t poll) override;

    /// A widget with this property still gets input, for example the window's close button.
    static constexpr const char* worksWhileBusy = "worksWhileBusy";

    /// The user tried to close the window during the wait.
    bool closeRequested() const { return closeRequested_; }

    /// Waits in an event loop.
    static void paintFor(std::chrono::milliseconds time);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showProgress();

    const QWidget& window_;
    Pause pause_;
    Progress progress_;
    Counter counter_;
    QTimer refresh_;
    QElapsedTimer confirming_;
    bool closeRequested_ = false;
};

} // namespace cabslot
