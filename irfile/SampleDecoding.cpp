#include "irfile/SampleDecoding.h"

#include "base/LittleEndian.h"
#include "irfile/FloatSample.h"
#include "irfile/SampleFormat.h"

#include <algorithm>
#include <array>
#include <bit>

namespace cabslot {

namespace {

constexpr std::uint16_t floatBits = 32;

std::uint32_t floatPoint(float sample) {
    const std::int32_t value = scaleToInteger(belowFullScale(sample));
    const auto point = static_cast<std::uint32_t>(value);
    // Only negative samples are masked to 24 bits: 2.0 and more leave higher bits set. The bits
    // above 23 are never sent, but resampling reads them.
    return value < 0 ? (point & sampleMask) | signBit : point;
}

/// Converts one little-endian sample to a point.
template<std::uint16_t bits>
std::uint32_t pointOf(std::uint32_t sample) {
    if constexpr (bits == floatBits)
        return floatPoint(std::bit_cast<float>(sample));
    else // keeps the 8-bit offset of 128, so that an IR sounds the same in every version
        return sample << (sampleBits - bits);
}

/// Decodes the first channel into `points`, one per frame; missing samples are 0.
template<std::uint16_t bits, std::size_t channels>
void decodeFrames(SampleBytes samples, std::span<std::uint32_t> points) {
    constexpr std::size_t width = bits / 8;
    constexpr std::size_t frameSize = width * channels;
    // A frame counts if its first sample is there; the file may end after that.
    const std::size_t held =
        std::min(points.size(), (samples.size() + frameSize - width) / frameSize);
    const std::uint8_t* sample = samples.data();
    for (std::uint32_t& point : points.first(held)) {
        point = pointOf<bits>(littleEndian(std::span<const std::uint8_t, width>(sample, width)));
        sample += frameSize;
    }
    std::ranges::fill(points.subspan(held), 0);
    if (held < points.size() && frameSize * held < samples.size()) // cut within this sample
        points[held] = pointOf<bits>(littleEndian(samples.subspan(frameSize * held)));
}

struct Depth {
    std::uint16_t bits;
    FrameDecoder mono;
    FrameDecoder stereo;
};

constexpr std::array<Depth, 4> depths = {{
    {8, decodeFrames<8, 1>, decodeFrames<8, 2>},
    {16, decodeFrames<16, 1>, decodeFrames<16, 2>},
    {24, decodeFrames<24, 1>, decodeFrames<24, 2>},
    {floatBits, decodeFrames<floatBits, 1>, decodeFrames<floatBits, 2>},
}};

} // namespace

FrameDecoder decoderFor(std::uint16_t bits, std::uint16_t channels) {
    const auto depth = std::ranges::find(depths, bits, &Depth::bits);
    if (depth == depths.end())
        return nullptr;
    return channels == 1 ? depth->mono : depth->stereo;
}

float meantValue(SampleBytes sample, std::uint16_t bits) {
    const std::uint32_t value =
        littleEndian(sample.first(std::min<std::size_t>(sample.size(), bits / 8u)));
    if (bits == floatBits)
        return std::bit_cast<float>(value);
    constexpr float scale = 2147483648.0f;
    constexpr std::uint32_t offset8 = 0x80000000; // a WAV file's 8-bit samples count from 128
    const std::uint32_t raised = (value << (32 - bits)) ^ (bits == 8 ? offset8 : 0);
    return static_cast<float>(static_cast<std::int32_t>(raised)) / scale;
}

} // namespace cabslot
