// The switch that lets an IR be heard, with the choice of phrase and level. Where no sound can be
// played the switch is off and a line says why.
#pragma once

#include "ui/Listening.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace cabslot {

class ListenBar final : public QWidget {
    Q_OBJECT
public:
    /// `listening` is used while it lives. When the bar goes or is hidden, it is heard no more.
    explicit ListenBar(Listening& listening, QWidget* parent = nullptr);
    ~ListenBar() override;

    /// What is heard when the switch is on; none: silence.
    void setIR(const std::optional<Samples>& ir);

    void toggle(); ///< as a press of the switch; nothing while that is disabled

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void choosePhrase(int index);
    void chooseOwnPhrase();
    void refresh();

    QPointer<Listening> listening_; ///< goes first when the program ends
    std::optional<Samples> ir_;
    QPushButton* switch_;
    QComboBox* phrase_;
    QCheckBox* asItIs_;
    QLabel* words_;
    QTimer lookAgain_; ///< while there is no sound device
};

} // namespace cabslot
