#include "irfile/WavBytes.h"

#include "irfile/SampleFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string_view>

namespace cabslot {

namespace {

constexpr std::uint32_t rate = 44100;
constexpr unsigned sampleSize = sampleBits / 8;
constexpr std::uint32_t headerSize = 36; // counted in the RIFF size in addition to the samples
constexpr std::uint32_t formatSize = 16;

void append(std::vector<std::uint8_t>& bytes, std::string_view tag) {
    std::ranges::copy(tag, std::back_inserter(bytes));
}

void append(std::vector<std::uint8_t>& bytes, std::uint32_t value, unsigned width) {
    for (unsigned i = 0; i < width; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i) & 0xFF));
}

} // namespace

std::vector<std::uint8_t> wavBytes(std::span<const float> samples) {
    const auto dataSize = static_cast<std::uint32_t>(samples.size() * sampleSize);
    const std::uint32_t padding = dataSize % 2; // chunks have an even size
    std::vector<std::uint8_t> bytes;
    bytes.reserve(headerSize + 8 + dataSize + padding);
    append(bytes, "RIFF");
    append(bytes, headerSize + dataSize + padding, 4);
    append(bytes, "WAVEfmt ");
    append(bytes, formatSize, 4);
    append(bytes, 1, 2); // integer samples
    append(bytes, 1, 2); // channel
    append(bytes, rate, 4);
    append(bytes, rate * sampleSize, 4);
    append(bytes, sampleSize, 2);
    append(bytes, sampleBits, 2);
    append(bytes, "data");
    append(bytes, dataSize, 4);
    for (const float sample : samples) {
        const float scaled = std::clamp(sample * fullScale, -fullScale, fullScale - 1);
        append(bytes, static_cast<std::uint32_t>(std::lround(scaled)), sampleSize);
    }
    append(bytes, 0, padding);
    return bytes;
}

std::vector<std::uint8_t> wavBytes(const Block& block) {
    std::array<float, irPointCount> samples{};
    std::ranges::transform(block, samples.begin(), [](std::uint32_t point) {
        return static_cast<float>(signedSample(point)) / fullScale; // exact
    });
    return wavBytes(std::span<const float>(samples));
}

} // namespace cabslot
