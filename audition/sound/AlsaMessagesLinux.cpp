#include "audition/sound/AlsaMessages.h"

#include <dlfcn.h>

namespace cabslot {

namespace {

using Handler = void (*)(const char* file, int line, const char* function, int error,
                         const char* format, ...);

void sayNothing(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                const char* /*format*/, ...) {}

} // namespace

// SDL loads libasound by itself when no sound server answers, so there is nothing to link.
void silenceAlsaMessages() {
    void* const library = ::dlopen("libasound.so.2", RTLD_LAZY);
    if (library == nullptr)
        return;
    if (void* const set = ::dlsym(library, "snd_lib_error_set_handler"); set != nullptr)
        reinterpret_cast<int (*)(Handler)>(set)(sayNothing);
}

} // namespace cabslot
