// A slot's small waveform in its row: that of the IR last loaded from this computer. If that is
// unknown it says so and is disabled, because the pedal cannot be asked for its content. A click
// opens the larger view.
#pragma once

#include "analysis/IRSummary.h"
#include "memory/SlotRecord.h"
#include "ui/Listening.h"

#include <QAbstractButton>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace cabslot {

class IRWindow;

class SlotPicture final : public QAbstractButton {
    Q_OBJECT
public:
    explicit SlotPicture(QWidget* parent = nullptr);

    /// The slot's name for the larger view and for screen readers.
    void setSlotName(const QString& name);

    using History = std::function<std::vector<SlotRecord>()>;

    /// What the larger view needs; `history` yields what the slot has held, newest first. Call it
    /// before the first summary.
    void setUp(Listening& listening, History history);

    /// Whether an earlier content can be loaded now.
    void setReady(bool ready);

    /// Shows `summary`, also in the larger view if that is open.
    void setSummary(IRSummary summary);

    /// Marks the slot's content as unknown.
    void clear();

    bool hasContent() const { return summary_.has_value(); }

    /// Shows this slot in the larger view of `other`; if it has one of its own, that comes to the
    /// front.
    void takeView(SlotPicture& other);

    QSize sizeHint() const override;

signals:
    /// The user wants an earlier content back.
    void loadAgain(const SlotRecord& record);

    /// The user wants the larger view to show the next slot (1) or the one before (-1).
    void stepped(int by);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void openView();
    void use(IRWindow& view);

    QString slotName_;
    QPointer<Listening> listening_;
    History history_;
    bool ready_ = false;
    std::optional<IRSummary> summary_;
    QPointer<IRWindow> view_; ///< the open view, if any; owned by the window
};

} // namespace cabslot
