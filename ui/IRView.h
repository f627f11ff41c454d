// Shows how an IR will sound: its name, waveform, frequency response and findings, or why there is
// nothing to show.
#pragma once

#include "analysis/IRSummary.h"

#include <QWidget>

class QFrame;
class QLabel;

namespace cabslot {

class PlotView;

class IRView final : public QWidget {
    Q_OBJECT
public:
    explicit IRView(QWidget* parent = nullptr);

    void showIR(const IRSummary& summary);

    /// Shows `title` in place of the name; `reason` is one or more sentences.
    void showReason(const QString& title, const QString& reason);

private:
    QLabel* name_;
    QLabel* detail_;
    QFrame* card_;
    PlotView* wave_;
    PlotView* response_;
    QLabel* findings_;
};

} // namespace cabslot
