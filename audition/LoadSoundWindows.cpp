// The Windows programs come without the sound module.
#include "audition/LoadSound.h"

namespace cabslot {

SoundLibrary* loadSound(const std::string& /*prefix*/, std::string& why) {
    why = "listening is not part of Cabslot on Windows yet";
    return nullptr;
}

} // namespace cabslot
