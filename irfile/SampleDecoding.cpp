#include "irfile/SampleDecoding.h"

#include "irfile/FloatSample.h"
#include "irfile/LittleEndian.h"

#include <algorithm>
#include <array>
#include <bit>

namespace cabslot {

namespace {

constexpr std::uint16_t pointBits = 24;
constexpr std::uint16_t floatBits = 32;
constexpr std::uint32_t pointMask = 0xFFFFFF;
constexpr std::uint32_t pointSign = 0x800000;

/// The sample of `width` bytes at `offset`; bytes past the end of `samples` count as 0.
std::uint32_t sampleAt(SampleBytes samples, std::size_t offset, std::size_t width) {
    if (offset >= samples.size())
        return 0;
    return littleEndian(samples.subspan(offset, std::min(width, samples.size() - offset)));
}

std::uint32_t floatPoint(std::uint32_t bits) {
    const std::int32_t value = scaleToInteger(drawnIn(std::bit_cast<float>(bits)));
    const auto point = static_cast<std::uint32_t>(value);
    // Kept on purpose: only negative samples are cut to 24 bits, 2.0 and more leave higher bits
    // set.
    return value < 0 ? (point & pointMask) | pointSign : point;
}

template<std::uint16_t bits>
std::uint32_t pointOf(std::uint32_t sample) {
    // Kept on purpose: 8-bit samples are shifted up like all others, their offset of 128 stays.
    if constexpr (bits == floatBits)
        return floatPoint(sample);
    else
        return sample << (pointBits - bits);
}

/// Decodes the first channel of the first `points.size()` frames, all of whose samples are there.
template<std::uint16_t bits, std::size_t frameSize>
void decodeHeld(SampleBytes samples, std::span<std::uint32_t> points) {
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = pointOf<bits>(littleEndian(samples.subspan(frameSize * i, bits / 8)));
}

/// Samples of three bytes, which no machine has a load for: four at a time, each as a word with the
/// byte behind it, so that the compiler can do the four at once.
template<std::size_t frameSize>
void decodeHeld24(SampleBytes samples, std::span<std::uint32_t> points) {
    constexpr std::size_t group = 4;
    std::size_t done = 0;
    for (; done + group < points.size(); done += group) { // the last sample has no byte behind it
        std::array<std::uint32_t, group> words;
        for (std::size_t i = 0; i < group; ++i)
            words[i] = littleEndianWord(samples.data() + frameSize * (done + i));
        for (std::size_t i = 0; i < group; ++i)
            points[done + i] = words[i] & pointMask;
    }
    decodeHeld<pointBits, frameSize>(samples.subspan(frameSize * done), points.subspan(done));
}

/// Samples of four bytes: floats.
template<std::size_t frameSize>
void decodeHeldFloats(SampleBytes samples, std::span<std::uint32_t> points) {
    const auto bitsAt = [samples](std::size_t i) {
        return littleEndianWord(samples.data() + frameSize * i);
    };
    std::uint32_t marks = floatSign;
    for (std::size_t i = 0; i < points.size(); ++i)
        marks &= insideMark(bitsAt(i));
    if (marks == 0) {
        for (std::size_t i = 0; i < points.size(); ++i)
            points[i] = floatPoint(bitsAt(i));
        return;
    }
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = insidePoint(std::bit_cast<float>(bitsAt(i)));
}

/// Decodes the first channel of as many frames as `points` has; samples that are not there are 0.
template<std::uint16_t bits, std::size_t channels>
void decodeFrames(SampleBytes samples, std::span<std::uint32_t> points) {
    constexpr std::size_t width = bits / 8;
    constexpr std::size_t frameSize = width * channels;
    const std::size_t held =
        std::min(points.size(), (samples.size() + frameSize - width) / frameSize);
    if constexpr (bits == pointBits)
        decodeHeld24<frameSize>(samples, points.first(held));
    else if constexpr (bits == floatBits)
        decodeHeldFloats<frameSize>(samples, points.first(held));
    else
        decodeHeld<bits, frameSize>(samples, points.first(held));
    std::ranges::fill(points.subspan(held), 0);
    if (held < points.size()) // the file may end within this sample
        points[held] = pointOf<bits>(sampleAt(samples, frameSize * held, width));
}

struct Depth {
    std::uint16_t bits;
    FrameDecoder mono;
    FrameDecoder stereo;
};

constexpr std::array<Depth, 4> depths = {{
    {8, decodeFrames<8, 1>, decodeFrames<8, 2>},
    {16, decodeFrames<16, 1>, decodeFrames<16, 2>},
    {pointBits, decodeFrames<pointBits, 1>, decodeFrames<pointBits, 2>},
    {floatBits, decodeFrames<floatBits, 1>, decodeFrames<floatBits, 2>},
}};

} // namespace

FrameDecoder decoderFor(std::uint16_t bits, std::uint16_t channels) {
    const auto depth = std::find_if(depths.begin(), depths.end(),
                                    [bits](const Depth& one) { return one.bits == bits; });
    if (depth == depths.end())
        return nullptr;
    return channels == 1 ? depth->mono : depth->stereo;
}

float meantValue(SampleBytes sample, std::uint16_t bits) {
    const std::uint32_t value = sampleAt(sample, 0, bits / 8u);
    if (bits == floatBits)
        return std::bit_cast<float>(value);
    constexpr float scale = 2147483648.0f;
    constexpr std::uint32_t offset8 = 0x80000000; // a WAV file's 8-bit samples count from 128
    const std::uint32_t raised = (value << (32 - bits)) ^ (bits == 8 ? offset8 : 0);
    return static_cast<float>(static_cast<std::int32_t>(raised)) / scale;
}

} // namespace cabslot
