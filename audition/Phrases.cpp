#include "audition/LoadSound.h"

namespace cabslot {

std::string cleanPhrasePath(const std::string& bundle) {
    return bundle + "/phrases/clean.wav";
}

std::string drivenPhrasePath(const std::string& bundle) {
    return bundle + "/phrases/driven.wav";
}

} // namespace cabslot
