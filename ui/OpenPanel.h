// The panel for choosing a WAV file, which shows and plays the selected one.
#pragma once

#include "ui/Preview.h"

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace cabslot {

class Listening;

/// The answer when a file was chosen.
inline constexpr int panelOK = 1;

using PanelClosed = std::function<void(int answer, const Choice& choice)>;

/// Shows the panel beside `window`, without blocking it, and returns. `closed` runs once, on the
/// main thread, with the answer and the choice, whose path is empty unless a file was chosen. The
/// panel opens in the folder of the last chosen file, from this run or an earlier one. `taken` are
/// the other slots' names. Closing it ends listening before `closed` runs.
void showOpenPanel(QWidget* window, const QString& title, const QStringList& taken,
                   Listening& listening, PanelClosed closed);

} // namespace cabslot
