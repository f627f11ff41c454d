// A label of a fixed number of lines: longer text ends with "…", and the tool tip shows it whole.
// Main thread.
#pragma once

#include <QLabel>
#include <QStringList>

namespace cabslot {

class ElidedText final : public QLabel {
    Q_OBJECT
public:
    explicit ElidedText(int lineCount, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList shownLines() const;

    int lineCount_;
};

} // namespace cabslot
