// The upload's progress bar: it fills while frames are sent, then a part of it moves to and fro
// until the pedal confirms. Main thread.
#pragma once

#include <QElapsedTimer>
#include <QProgressBar>

namespace cabslot {

class UploadBar final : public QProgressBar {
    Q_OBJECT
public:
    explicit UploadBar(QWidget* parent = nullptr);

    /// Shows the bar while frame 1 to uploadFrameCount is being sent.
    void showFrame(unsigned frame);

    /// Shows that all frames were sent. The bar moves with repeated calls.
    void showWaiting();

    /// Hides the bar but keeps its space.
    void showIdle();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QElapsedTimer waiting_; ///< runs while waiting for the confirmation
};

} // namespace cabslot
