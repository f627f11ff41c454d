// What leaves on which 10 ms tick.
//
// `SendStep` walks 1000 -> 239 -> 233 <-> 237: one frame without a command, one request for all
// data, then an upload frame on every second tick for as long as there is an upload. It never goes
// back, also when a device goes and another comes.
#pragma once

namespace cabslot {

/// One tick: builds the frame that is due, if any, and sends it once. The result of the sending is
/// not looked at: there is no retry. Device thread.
void runSendScheduler();

} // namespace cabslot
