// A slot's small waveform in its row: that of the IR last loaded from this computer. If that is
// unknown it says so and is disabled, because the pedal cannot be asked for its content. A click
// opens the larger view.
#pragma once

#include "analysis/IRSummary.h"
#include "ui/Listening.h"

#include <QAbstractButton>
#include <QPointer>

#include <optional>

namespace cabslot {

class IRWindow;

class SlotPicture final : public QAbstractButton {
    Q_OBJECT
public:
    explicit SlotPicture(QWidget* parent = nullptr);

    /// The slot's name for the larger view and for screen readers.
    void setSlotName(const QString& name);

    /// Call it before the first summary.
    void setListening(Listening& listening) { listening_ = &listening; }

    /// Shows `summary`, also in the larger view if that is open.
    void setSummary(IRSummary summary);

    /// Marks the slot's content as unknown.
    void clear();

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void openView();

    QString slotName_;
    QPointer<Listening> listening_;
    std::optional<IRSummary> summary_;
    QPointer<IRWindow> view_; ///< the open view, if any; owned by the window
};

} // namespace cabslot
