// The larger view of a slot's IR, which can be played there. A separate window, which does not
// block the main one; Esc closes it, L or Space starts and stops listening.
#pragma once

#include "analysis/IRSummary.h"

#include <QDialog>

namespace cabslot {

class IRView;
class ListenBar;
class Listening;

class IRWindow final : public QDialog {
    Q_OBJECT
public:
    /// Deletes itself when it is closed.
    IRWindow(Listening& listening, QWidget* parent);

    /// Shows `summary` under the slot's name and replaces what was shown before.
    void setSummary(const QString& slot, const IRSummary& summary);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    IRView* ir_;
    ListenBar* listen_;
};

} // namespace cabslot
