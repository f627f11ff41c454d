// The larger view of an IR in a slot, which can be heard in it. A window of its own beside the main
// one, which stays usable; Esc closes it, L or Space listens.
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

    /// Shows `summary` under the slot's name, in place of what was shown before.
    void setSummary(const QString& slot, const IRSummary& summary);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    IRView* ir_;
    ListenBar* listen_;
};

} // namespace cabslot
