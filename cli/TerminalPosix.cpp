#include "cli/Terminal.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace cabslot {

namespace {

/// Whether the terminal's locale is UTF-8; does not change the process's own locale.
bool isUtf8() {
    const locale_t locale = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return false;
    const bool utf8 = std::string_view(::nl_langinfo_l(CODESET, locale)) == "UTF-8";
    ::freelocale(locale);
    return utf8;
}

/// The kernel's console has no Braille patterns, and a dumb terminal cannot show them at all.
bool knowsBraille() {
    const char* const terminal = std::getenv("TERM");
    const std::string_view name = terminal == nullptr ? "dumb" : terminal;
    return name != "dumb" && name != "linux" && isUtf8();
}

} // namespace

void prepareStreams() {}

bool standardErrorIsTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

std::size_t columnsForBraille() {
    winsize size{};
    if (::isatty(STDOUT_FILENO) != 1 || !knowsBraille())
        return 0;
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::numeric_limits<std::size_t>::max(); // the width is unknown: no limit
    return size.ws_col;
}

} // namespace cabslot
