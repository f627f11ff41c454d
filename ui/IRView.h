// An IR as it will sound: its name, waveform and frequency response, and what is odd about it. Or
// why there is nothing to show.
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

    /// `title` is shown in the name's place; `reason` is one or more sentences.
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
