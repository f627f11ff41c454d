# Toolchain: 64-bit Windows programs from Debian's MinGW compiler, run under Wine.
# CABSLOT_WINDOWS_PREFIX, in the environment, is the folder of the libraries that were built for it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(tools x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${tools}-gcc-posix)
set(CMAKE_CXX_COMPILER ${tools}-g++-posix)
set(CMAKE_RC_COMPILER ${tools}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${tools} $ENV{CABSLOT_WINDOWS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} $ENV{CABSLOT_WINDOWS_PREFIX}/lib/pkgconfig)

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)

# The C++ and thread run-time libraries are linked into each program and DLL, so they need not be
# shipped.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()
