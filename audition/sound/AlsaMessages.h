// libasound tells on standard error of each device that it did not find.
#pragma once

namespace cabslot {

/// From now on it keeps that to itself: whoever asks for a device tells the outcome in one line.
void silenceAlsaMessages();

} // namespace cabslot
