// Programming errors that abort the process: an outlet that is not connected, a window that does
// not exist. The texts stay as they are, so that crash reports of all versions can be compared.
#pragma once

#include <QPointer>

#include <cstdio>
#include <cstdlib>

namespace cabslot {

inline constexpr const char* nilUnwrapped =
    "Unexpectedly found nil while unwrapping an Optional value";
inline constexpr const char* nilOutlet =
    "Unexpectedly found nil while implicitly unwrapping an Optional value";

[[noreturn]] inline void fatalError(const char* what) {
    std::fprintf(stderr, "Fatal error: %s\n", what);
    std::abort();
}

/// Dereferences a pointer that must not be null.
template<class T>
T& unwrapped(T* pointer, const char* what = nilUnwrapped) {
    if (pointer == nullptr)
        fatalError(what);
    return *pointer;
}

/// Dereferences a weak outlet that must be connected.
template<class T>
T& outlet(const QPointer<T>& pointer) {
    return unwrapped(pointer.data(), nilOutlet);
}

} // namespace cabslot
