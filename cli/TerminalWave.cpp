#include "cli/TerminalWave.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace cabslot {

namespace {

constexpr std::size_t waveLines = 6;
constexpr std::size_t dotsAcross = 2; // of one pattern
constexpr std::size_t dotsDown = 4;
constexpr std::size_t mostColumns = 72;

// The dots of a pattern, U+2800 and these bits.
constexpr unsigned dotBits[dotsDown][dotsAcross] = {
    {0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};

std::string pattern(unsigned dots) {
    return {'\xE2', static_cast<char>(0xA0 + (dots >> 6)), static_cast<char>(0x80 + (dots & 0x3F))};
}

/// Whether the terminal's language setting is UTF-8; the process's own stays as it is.
bool isUtf8() {
    const locale_t locale = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return false;
    const bool utf8 = std::string_view(::nl_langinfo_l(CODESET, locale)) == "UTF-8";
    ::freelocale(locale);
    return utf8;
}

/// The kernel's console has no Braille patterns, a dumb terminal nothing at all.
bool knowsBraille() {
    const char* const terminal = std::getenv("TERM");
    const std::string_view name = terminal == nullptr ? "dumb" : terminal;
    return name != "dumb" && name != "linux" && isUtf8();
}

} // namespace

std::string brailleWave(const Samples& samples, std::size_t columns) {
    constexpr std::size_t rows = waveLines * dotsDown;
    const double peak = std::max(peakOf(samples), 1e-9);
    const auto rowOf = [peak](double value) {
        return static_cast<std::size_t>(std::lround((1 - value / peak) / 2 * (rows - 1)));
    };
    const std::vector<Range> ranges = envelope(samples, columns * dotsAcross);
    std::string text;
    for (std::size_t line = 0; line < waveLines; ++line) {
        for (std::size_t column = 0; column < columns; ++column) {
            unsigned dots = 0;
            for (std::size_t y = 0; y < dotsDown; ++y)
                for (std::size_t x = 0; x < dotsAcross; ++x) {
                    const Range& range = ranges[column * dotsAcross + x];
                    const std::size_t row = line * dotsDown + y;
                    if (row >= rowOf(range.highest) && row <= rowOf(range.lowest))
                        dots |= dotBits[y][x];
                }
            text += pattern(dots);
        }
        text += '\n';
    }
    return text;
}

std::size_t waveColumns() {
    winsize size{};
    if (::isatty(STDOUT_FILENO) != 1 || !knowsBraille())
        return 0;
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return mostColumns;
    return std::min<std::size_t>(size.ws_col, mostColumns);
}

} // namespace cabslot
