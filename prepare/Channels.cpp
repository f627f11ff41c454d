#include "prepare/Channels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cabslot {

namespace {

/// Adds a channel, divided by `count`.
void addChannel(Signal& sum, const IRFile& file, std::uint16_t channel, std::uint16_t count) {
    std::array<float, 4096> values;
    std::size_t first = 0;
    while (const std::size_t read = file.readChannel(channel, first, values)) {
        sum.resize(std::max(sum.size(), first + read));
        for (std::size_t i = 0; i < read; ++i)
            sum[first + i] += std::isfinite(values[i]) ? static_cast<double>(values[i]) / count : 0;
        first += read;
    }
}

} // namespace

Signal meanOfChannels(const IRFile& file, std::uint16_t count) {
    Signal sum;
    for (std::uint16_t channel = 0; channel < count; ++channel)
        addChannel(sum, file, channel, count);
    return sum;
}

} // namespace cabslot
