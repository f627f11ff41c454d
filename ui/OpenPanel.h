// The panel that offers WAV files.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace cabslot {

/// The answer that means a file was chosen.
inline constexpr int panelOK = 1;

/// Shows the panel beside `window`, which stays usable, and returns. `closed` runs once, on the
/// main thread, with the answer and the path (empty unless a file was chosen). It opens in the
/// folder that a file was last chosen from, in this run or an earlier one.
void showOpenPanel(QWidget* window, const QString& title,
                   std::function<void(int answer, const QString& path)> closed);

} // namespace cabslot
