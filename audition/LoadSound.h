// Loads the module that has what the sound needs: SDL, libsndfile, libsoxr, libebur128. They are
// some forty libraries together, and a program that nobody listens with does without.
#pragma once

#include "audition/Sound.h"

namespace cabslot {

/// Takes some ten milliseconds the first time. The module is `lib/cabslot/cabslot-sound.so` in
/// `prefix` and stays loaded to the end of the process. Null and `why` (a sentence without its full
/// stop) when it cannot be loaded.
SoundLibrary* loadSound(const std::string& prefix, std::string& why);

/// The name of the one function that the module exports: a SoundLibrary* () in C.
inline constexpr const char* soundEntry = "cabslotSoundLibrary";

/// The dry phrases that ship, in the bundle's folder.
std::string cleanPhrasePath(const std::string& bundle);
std::string drivenPhrasePath(const std::string& bundle);

} // namespace cabslot
