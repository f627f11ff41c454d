// The panel for choosing a WAV file, which shows and plays the selected one.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace cabslot {

class Listening;

/// The answer when a file was chosen.
inline constexpr int panelOK = 1;

using PanelClosed = std::function<void(int answer, const QString& path, bool prepares)>;

/// Shows the panel beside `window`, without blocking it, and returns. `closed` runs once, on the
/// main thread, with the answer, the path (empty unless a file was chosen) and whether to prepare
/// the file. The panel opens in the folder of the last chosen file, from this run or an earlier
/// one. Closing it ends listening before `closed` runs.
void showOpenPanel(QWidget* window, const QString& title, Listening& listening, PanelClosed closed);

} // namespace cabslot
