# What every library and program of the project is compiled with.
option(CABSLOT_WERROR "Treat warnings as errors" OFF)
option(CABSLOT_FUZZ "Build the fuzz targets; the preset of that name has what they need" OFF)
set(CABSLOT_SANITIZE "" CACHE STRING "Sanitizers, e.g. address,undefined or thread")

# Line numbers for a backtrace, which compile faster than variables; the preset dev has those.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")

# Sample conversion must give the same bits on every processor: no fused multiply-add.
add_compile_options(-ffp-contract=off)

if(WIN32)
  # Every program has the manifest that makes its arguments and file names UTF-8, and the icon; and
  # MinGW links its stack protector, which the checks below need.
  enable_language(RC)
  set(program_resources ${PROJECT_SOURCE_DIR}/packaging/windows/cabslot.rc)
  string(APPEND CMAKE_RC_FLAGS " -I$ENV{CABSLOT_WINDOWS_PREFIX}/share")
  add_link_options(-fstack-protector-strong)
endif()

# Hardening: a mistake with an untrusted file ends in an abort. Not in debug builds, because some of it
# needs the optimiser, nor with the sanitizers, which find more.
if(NOT CABSLOT_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  if(NOT WIN32) # whose programs are position independent anyway
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    include(CheckPIESupported)
    check_pie_supported()
  endif()
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    add_compile_options(-fstack-clash-protection)
    add_link_options(-Wl,-z,relro,-z,now)
  endif()
endif()

# GCC 12 warns falsely about "text" + std::string in optimised builds (its bug 105651), and about what it
# inlines from precompiled headers.
add_library(cabslot_warnings INTERFACE)
target_compile_options(cabslot_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-array-bounds;-Wno-stringop-overflow>
  $<$<BOOL:${CABSLOT_WERROR}>:-Werror>)

add_library(cabslot_sanitizers INTERFACE)
if(CABSLOT_SANITIZE)
  target_compile_options(cabslot_sanitizers INTERFACE
    -fsanitize=${CABSLOT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(cabslot_sanitizers INTERFACE -fsanitize=${CABSLOT_SANITIZE})
endif()

# Half of what a source takes to compile is headers that every source includes. In builds for use base
# precompiles the standard ones for all libraries. A target with NAME_headers precompiles those, too, for
# itself, in every build.
set(base_headers
  <algorithm> <array> <atomic> <chrono> <cmath> <cstdint> <filesystem> <functional> <iostream> <map>
  <memory> <mutex> <optional> <span> <sstream> <string> <string_view> <thread> <utility> <variant> <vector>)
function(cabslot_precompile name)
  if(DEFINED ${name}_headers)
    target_precompile_headers(${name} PRIVATE ${base_headers} ${${name}_headers})
  elseif(CABSLOT_SHARE_HEADERS AND TARGET base)
    target_precompile_headers(${name} REUSE_FROM base)
  endif()
endfunction()

# One folder, one static library of the folder's name; headers are included as "folder/File.h".
function(cabslot_library name)
  add_library(${name} STATIC ${ARGN})
  if(NOT CABSLOT_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    set(CABSLOT_SHARE_HEADERS ON) # all are position independent there, as they must be for this
  endif()
  cabslot_precompile(${name})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC cabslot_sanitizers PRIVATE cabslot_warnings)
endfunction()

# What an installation contains, and what ./run builds.
add_custom_target(programs)

function(cabslot_program name)
  add_executable(${name} ${ARGN} ${program_resources})
  add_dependencies(programs ${name})
  target_link_libraries(${name} PRIVATE cabslot_sanitizers cabslot_warnings)
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()
