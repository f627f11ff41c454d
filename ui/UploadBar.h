// The bar that shows how far an upload is: it fills over the frames, then a part of it goes to and
// fro while the pedal's confirmation is awaited. Main thread.
#pragma once

#include <QElapsedTimer>
#include <QProgressBar>

namespace cabslot {

class UploadBar final : public QProgressBar {
    Q_OBJECT
public:
    explicit UploadBar(QWidget* parent = nullptr);

    /// Shows the bar with frame 1 to uploadFrameCount being sent.
    void showFrame(unsigned frame);

    /// Shows the bar with all frames sent. Called again and again, it moves.
    void showWaiting();

    /// Hides it; its place stays free.
    void showIdle();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QElapsedTimer waiting_; ///< runs while the confirmation is awaited
};

} // namespace cabslot
