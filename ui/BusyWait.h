// How the window waits during a slot's upload: it blocks the caller but keeps painting. Input
// meanwhile is discarded; requests to close the window and to stop waiting are remembered.
#pragma once

#include "upload/SlotUpload.h"

#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

class QWidget;

namespace cabslot {

class BusyWait final : public QObject, public UploadWait {
    Q_OBJECT
public:
    /// Replaces the pause between two polls; the window must keep painting meanwhile.
    using Pause = std::function<void(std::chrono::milliseconds)>;

    /// The upload's progress.
    struct State {
        unsigned frame;               ///< being sent, 1 to 7; 0 when all have been sent
        std::chrono::seconds waiting; ///< for the pedal's confirmation, until now
        bool pedalGone;
        bool closing; ///< closeRequested()
        bool mayStop; ///< stop() has an effect
    };
    using Progress = std::function<void(const State& state)>;

    enum class Counter { silent, aloud };

    /// From then on the user may stop waiting; at any time when the pedal is gone.
    static constexpr std::chrono::seconds patience{15};

    /// Remembers requests to close `window`. An empty `pause` waits in an event loop. With the
    /// counter aloud, each poll for the confirmation prints its number on standard output.
    BusyWait(const QWidget& window, Pause pause, Progress progress, Counter counter);
    ~BusyWait() override;

    bool waitForUpload() override;
    bool waitForConfirmation(std::uint32_t poll) override;
    bool isEnough() override;

    /// Ends the wait for the confirmation as soon as all frames have been sent.
    void stop();

    /// A widget with this property still gets input, for example the window's close button.
    static constexpr const char* worksWhileBusy = "worksWhileBusy";

    /// The user tried to close the window during the wait.
    bool closeRequested() const { return closeRequested_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void waitInLoop(std::chrono::milliseconds time);
    void showProgress();
    State state() const;
    bool isStopKey(const QObject& watched, const QEvent& event) const;

    const QWidget& window_;
    Pause pause_;
    Progress progress_;
    Counter counter_;
    QTimer refresh_;
    QEventLoop loop_;
    std::chrono::seconds waiting_{0};
    bool closeRequested_ = false;
    bool stopped_ = false;
};

} // namespace cabslot
