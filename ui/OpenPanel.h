// The panel that offers WAV files, and shows and plays the one that is pointed at.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace cabslot {

class Listening;

/// The answer that means a file was chosen.
inline constexpr int panelOK = 1;

using PanelClosed = std::function<void(int answer, const QString& path, bool prepares)>;

/// Shows the panel beside `window`, which stays usable, and returns. `closed` runs once, on the
/// main thread, with the answer, the path (empty unless a file was chosen) and whether the file is
/// to be prepared. It opens in the
/// folder that a file was last chosen from, in this run or an earlier one. Listening in it ends
/// when it is closed, before `closed` runs.
void showOpenPanel(QWidget* window, const QString& title, Listening& listening, PanelClosed closed);

} // namespace cabslot
