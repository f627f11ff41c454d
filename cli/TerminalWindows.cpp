#include "cli/Terminal.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdlib>

namespace cabslot {

namespace {

UINT codePageBefore = CP_UTF8;

HANDLE console(DWORD stream, DWORD& mode) {
    const HANDLE handle = ::GetStdHandle(stream);
    return ::GetConsoleMode(handle, &mode) ? handle : nullptr;
}

} // namespace

// The console keeps its settings after the program ends, so its code page is restored.
void prepareStreams() {
    ::_setmode(1, _O_BINARY);
    ::_setmode(2, _O_BINARY);
    codePageBefore = ::GetConsoleOutputCP();
    ::SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { ::SetConsoleOutputCP(codePageBefore); });
    DWORD mode = 0;
    if (const HANDLE handle = console(STD_ERROR_HANDLE, mode)) // the progress line is wiped
        ::SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

bool standardErrorIsTerminal() {
    DWORD mode = 0;
    return console(STD_ERROR_HANDLE, mode) != nullptr;
}

// Only Windows Terminal, which sets WT_SESSION, has Braille patterns in its default font.
std::size_t columnsForBraille() {
    CONSOLE_SCREEN_BUFFER_INFO about{};
    if (std::getenv("WT_SESSION") == nullptr ||
        !::GetConsoleScreenBufferInfo(::GetStdHandle(STD_OUTPUT_HANDLE), &about))
        return 0;
    return static_cast<std::size_t>(about.srWindow.Right - about.srWindow.Left + 1);
}

} // namespace cabslot
