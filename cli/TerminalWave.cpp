#include "cli/TerminalWave.h"

#include "cli/Terminal.h"

#include <algorithm>
#include <cmath>

namespace cabslot {

namespace {

constexpr std::size_t waveLines = 6;
constexpr std::size_t dotsAcross = 2; // per pattern
constexpr std::size_t dotsDown = 4;
constexpr std::size_t mostColumns = 72;

// The bits of a pattern's dots, added to U+2800.
constexpr unsigned dotBits[dotsDown][dotsAcross] = {
    {0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};

std::string pattern(unsigned dots) {
    return {'\xE2', static_cast<char>(0xA0 + (dots >> 6)), static_cast<char>(0x80 + (dots & 0x3F))};
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
    return std::min(columnsForBraille(), mostColumns);
}

} // namespace cabslot
