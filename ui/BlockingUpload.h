// What surrounds every upload in the window: it stops listening, blocks all input but that which
// ends the wait, shows the progress, and afterwards handles what was requested meanwhile. Main
// thread.
#pragma once

#include "ui/BusyWait.h"
#include "upload/SlotUpload.h"

#include <QString>

#include <functional>

class QWidget;

namespace cabslot {

class Listening;
class MainQueue;
class SlotRow;
class StatusLine;
class UploadBar;

class BlockingUpload {
public:
    /// All must outlive this.
    struct Parts {
        QWidget& view;
        StatusLine& status;
        UploadBar& bar;
        MainQueue& queue;
        Listening& listening;
        BusyWait::Pause pause;
        std::function<void()> runningChanged; ///< called when isRunning() has changed
    };
    explicit BlockingUpload(Parts parts);

    struct Job {
        std::int64_t slot; ///< for the words; 1 to 4
        SlotRow* row;      ///< marked meanwhile; null: none
        BusyWait::Counter counter;
        QString series; ///< put before the progress, such as "2 of 3: "
        bool clears;    ///< the slot
    };
    using Upload = std::function<UploadResult(UploadWait&)>;

    /// Runs `upload` and returns its result.
    UploadResult run(const Job& job, const Upload& upload);

    bool isRunning() const { return running_; }

    /// The user has tried to close the window meanwhile: it closes when its events are next
    /// handled.
    bool closeRequested() const { return closeRequested_; }

private:
    void setRunning(bool running, SlotRow* row);
    void showProgress(const Job& job, const BusyWait::State& state);

    Parts parts_;
    bool running_ = false;
    bool closeRequested_ = false;
};

} // namespace cabslot
