// The larger view of an IR: what will sound, over time and over frequency, and what is odd about
// it. A window of its own beside the main one, which stays usable; Esc closes it.
#pragma once

#include "analysis/IRSummary.h"

#include <QDialog>

class QLabel;

namespace cabslot {

class PlotView;

class IRWindow final : public QDialog {
    Q_OBJECT
public:
    /// Deletes itself when it is closed.
    explicit IRWindow(QWidget* parent);

    /// Shows `summary` under the slot's name, in place of what was shown before.
    void setSummary(const QString& slot, const IRSummary& summary);

private:
    QLabel* name_;
    QLabel* detail_;
    PlotView* wave_;
    PlotView* response_;
    QLabel* findings_;
};

} // namespace cabslot
