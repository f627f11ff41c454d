// libasound writes a message to standard error for each device that it did not find.
#pragma once

namespace cabslot {

/// Silences these messages: the caller reports the outcome in one line.
void silenceAlsaMessages();

} // namespace cabslot
