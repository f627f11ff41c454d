#include "audition/sound/AlsaMessages.h"

#include <dlfcn.h>

namespace cabslot {

namespace {

using Handler = void (*)(const char* file, int line, const char* function, int error,
                         const char* format, ...);

void discard(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
             const char* /*format*/, ...) {}

} // namespace

// Looked up at run time: SDL loads libasound itself if no sound server answers.
void silenceAlsaMessages() {
    void* const library = ::dlopen("libasound.so.2", RTLD_LAZY);
    if (library == nullptr)
        return;
    if (void* const set = ::dlsym(library, "snd_lib_error_set_handler"); set != nullptr)
        reinterpret_cast<int (*)(Handler)>(set)(discard);
}

} // namespace cabslot
