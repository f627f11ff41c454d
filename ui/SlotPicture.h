// A slot's small waveform in its row: of what was last loaded into it since the program was
// started. Before that it is empty and no button: what the pedal holds cannot be asked for. A click
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

    /// Before the first summary.
    void setListening(Listening& listening) { listening_ = &listening; }

    /// From now on `summary` is shown, also in the larger view if that is open. The widget's
    /// property "slot" (1 to 4) says which slot it is of.
    void setSummary(IRSummary summary);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void openView();
    QString slotName() const;

    QPointer<Listening> listening_;
    std::optional<IRSummary> summary_;
    QPointer<IRWindow> view_; ///< while it is open; it belongs to the window
};

} // namespace cabslot
