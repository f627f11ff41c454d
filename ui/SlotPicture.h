// A slot's small waveform in its row: of what was last loaded into it from this computer. Where
// that is not known it says so and is no button: what the pedal holds cannot be asked for. A click
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

    /// What the slot is called in the larger view and to a screen reader.
    void setSlotName(const QString& name);

    /// Before the first summary.
    void setListening(Listening& listening) { listening_ = &listening; }

    /// From now on `summary` is shown, also in the larger view if that is open.
    void setSummary(IRSummary summary);

    /// From now on nothing is known of the slot.
    void clear();

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void openView();

    QString slotName_;
    QPointer<Listening> listening_;
    std::optional<IRSummary> summary_;
    QPointer<IRWindow> view_; ///< while it is open; it belongs to the window
};

} // namespace cabslot
