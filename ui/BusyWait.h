// How the window waits while a slot's upload is under way: it blocks whoever called, but goes on
// painting. Input made meanwhile is thrown away; a wish to close is remembered.
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
    /// Passes so much time; the window must go on painting in it.
    using Pause = std::function<void(std::chrono::milliseconds)>;

    /// How far the upload is.
    struct State {
        unsigned frame;       ///< that is being sent, 1 to 7; 0 when all are sent
        std::int64_t seconds; ///< that the pedal's confirmation has been waited for
        bool closing;         ///< closeRequested()
    };
    using Progress = std::function<void(const State& state)>;

    enum class Counter { silent, aloud };

    /// `window` is the one whose closing is remembered. With the counter aloud, each poll for the
    /// confirmation prints its number on standard output.
    BusyWait(const QWidget& window, Pause pause, Progress progress, Counter counter);
    ~BusyWait() override;

    bool waitForUpload() override;
    bool waitForConfirmation(std::uint32_t poll) override;

    /// A widget with this property still gets input, such as the window's own close button.
    static constexpr const char* worksWhileBusy = "worksWhileBusy";

    /// Somebody wanted to close the window during the wait.
    bool closeRequested() const { return closeRequested_; }

    /// Passes the time in an event loop.
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
