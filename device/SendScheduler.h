// Decides what is sent on each tick of the device thread.
//
// `SendStep` goes 1000 -> 239 -> 233 <-> 237: one frame without a command, one request for all
// data, then an upload frame on every second tick while an upload runs. It is never reset, not even
// when a device is removed and another found.
#pragma once

#include <chrono>

namespace cabslot {

/// Between two ticks of the device thread's timers.
inline constexpr std::chrono::milliseconds tickPeriod{10};

/// Between two frames of an upload.
inline constexpr auto uploadFramePeriod = 2 * tickPeriod;

/// One tick: builds the frame that is due, if any, and sends it once. Failures are ignored: there
/// is no retry. Device thread.
void runSendScheduler();

} // namespace cabslot
