// The larger view of a slot's IR, which can be played there, with what the slot held before, which
// can be loaded again. A separate window, which does not block the main one; Esc closes it, L or
// Space starts and stops listening, Left and Right change the slot.
#pragma once

#include "analysis/IRSummary.h"
#include "memory/SlotRecord.h"

#include <QDialog>

#include <vector>

class QListWidget;
class QPushButton;

namespace cabslot {

class IRView;
class ListenBar;
class Listening;

class IRWindow final : public QDialog {
    Q_OBJECT
public:
    /// Deletes itself when it is closed.
    IRWindow(Listening& listening, QWidget* parent);

    /// Shows `summary`, the content of the slot of that name, and replaces what was shown before.
    /// `history` is what the slot has held, newest first.
    void showSlot(const QString& slot, const IRSummary& summary, std::vector<SlotRecord> history);

    /// Whether an earlier content can be loaded now.
    void setReady(bool ready);

signals:
    void loadAgain(const SlotRecord& record);
    void stepped(int by); ///< to the next slot (1) or the one before (-1)

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeHistory();
    void showSelected(int row);
    void updateButton();
    bool takeKey(const QKeyEvent& event);
    bool isNow(const SlotRecord& record) const;

    IRView* ir_;
    ListenBar* listen_;
    QWidget* earlier_; ///< the list and its button
    QListWidget* list_;
    QPushButton* again_;
    IRSummary now_; ///< what the slot holds
    std::vector<SlotRecord> history_;
    bool ready_ = false;
};

} // namespace cabslot
