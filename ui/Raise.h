// One window for each pedal: a second one asks the first to come to the front. Each system has its
// own source file for this. Main thread.
#pragma once

#include <QWidget>

#include <cstdint>
#include <functional>

namespace cabslot {

/// Brings `window` to the front whenever another program calls raiseWindowOf() for this process,
/// and calls `raised` afterwards, and possibly at other times. Call it once, before the pedal is
/// opened: a process that holds a pedal can be asked.
void raiseOnRequest(QWidget& window, const std::function<void()>& raised);

/// Asks the window of process `pid`, which must be a cabslot, to come to the front. False if that
/// is another user's or has ended.
bool raiseWindowOf(std::int64_t pid);

} // namespace cabslot
