// Loads the module with everything that sound needs: SDL, libsndfile, libsoxr, libebur128. With
// their dependencies these are many libraries, which a program needs only for listening.
#pragma once

#include "audition/Sound.h"

namespace cabslot {

/// Takes some ten milliseconds the first time. The module is `lib/cabslot/cabslot-sound.so` in
/// `prefix` and stays loaded until the process ends. Null if it cannot be loaded, with the reason
/// in `why` (a sentence without its full stop).
SoundLibrary* loadSound(const std::string& prefix, std::string& why);

/// The only function that the module exports: a SoundLibrary* () with C linkage.
inline constexpr const char* soundEntry = "cabslotSoundLibrary";

} // namespace cabslot
