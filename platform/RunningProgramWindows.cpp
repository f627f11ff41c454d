#include "platform/RunningProgram.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <string>

namespace cabslot {

std::filesystem::path runningProgram() {
    constexpr DWORD longestPath = 32767;
    std::wstring path(longestPath, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), longestPath));
    return path;
}

} // namespace cabslot
