// The switch for listening to an IR, with the choice of phrase and level. If no sound can be
// played, the switch is disabled and a line says why.
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
    /// `listening` may be destroyed before the bar. Hiding or destroying the bar stops its sound.
    explicit ListenBar(Listening& listening, QWidget* parent = nullptr);
    ~ListenBar() override;

    /// What plays while the switch is on; none: silence.
    void setIR(const std::optional<Samples>& ir);

    void toggle(); ///< like pressing the switch; does nothing while it is disabled

    QList<QWidget*> tabOrder() const; ///< its controls, from the left

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void choosePhrase(int index);
    void chooseOwnPhrase();
    void refresh();

    QPointer<Listening> listening_; ///< destroyed first when the program ends
    std::optional<Samples> ir_;
    QPushButton* switch_;
    QComboBox* phrase_;
    QCheckBox* asItIs_;
    QLabel* words_;
    QTimer lookAgain_; ///< runs while there is no sound device
};

} // namespace cabslot
