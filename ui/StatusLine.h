// The line above the slots: what is going on, or what was wrong, and a button for what can be done
// about it. Main thread.
#pragma once

#include <QWidget>

class QPushButton;

namespace cabslot {

class ElidedText;

class StatusLine final : public QWidget {
    Q_OBJECT
public:
    explicit StatusLine(QWidget* parent = nullptr);

    void say(const QString& text, bool problem = false);

    /// Says it, and has screen readers read it aloud, with `more`.
    void tell(const QString& text, const QString& more = {});

    /// Says that a file can be loaded.
    void sayReady();

    /// Reports a problem here and on standard error. Returns it as it is shown, for an alert:
    /// printable, beginning with a capital and ending with a full stop.
    QString refuse(const QString& why);

    /// Offers to undo what the line reports, until it says something else.
    void offerUndo(const QString& what);
    QPushButton* undoButton() const { return undo_; }

    /// Works during an upload; hidden unless the wait may be ended.
    QPushButton* stopButton() const { return stop_; }

private:
    ElidedText* text_;
    QPushButton* undo_;
    QPushButton* stop_;
};

} // namespace cabslot
