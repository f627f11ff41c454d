#include "audition/LoadSound.h"

#include <dlfcn.h>

namespace cabslot {

SoundLibrary* loadSound(const std::string& prefix, std::string& why) {
    const std::string path = prefix + "/lib/cabslot/cabslot-sound.so";
    void* const module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const entry = module == nullptr ? nullptr : ::dlsym(module, soundEntry);
    if (entry == nullptr) {
        why = std::string("the sound module cannot be loaded: ") + ::dlerror();
        return nullptr;
    }
    return reinterpret_cast<SoundLibrary* (*)()>(entry)();
}

} // namespace cabslot
