#include "irfile/IRConversion.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <limits>

namespace cabslot {

static_assert(FLT_EVAL_METHOD == 0, "single precision has to be computed in single precision");
static_assert(std::numeric_limits<float>::is_iec559);

std::array<float, irWorkCount> EnterBufferF{};
std::array<float, irPointCount> ResampOut{};

namespace {

constexpr float fullScale = 8388608.0f;
constexpr float almostOne = std::bit_cast<float>(0x3F7FFFEFu); // 0.999999

constexpr std::uint32_t sampleMask = 0xFFFFFF;
constexpr std::uint32_t signBit = 0x800000;
constexpr std::uint32_t signExtension = 0xFF000000;

// The ratios are the true ones rounded to three decimals, and the caps lie a few points above the
// last point that 1024 output points read (1114, 2047 and 2228): both on purpose.
constexpr std::array<IRRate, 4> rateTable = {{
    {44100, 1024, 0.0f},
    {48000, 1120, std::bit_cast<float>(0x3F8B4396u)}, // 1.088
    {88200, 2050, 2.0f},
    {96000, 2240, std::bit_cast<float>(0x400B53F8u)}, // 2.177
}};

float ratioOf(std::int32_t rate) {
    const IRRate* row = findRate(rate);
    return row ? row->ratio : 0.0f;
}

/// Exactly 1.0 has no 24-bit sample; -1.0 is treated alike.
float drawnIn(float sample) {
    if (sample == 1.0f)
        return almostOne;
    return sample == -1.0f ? -almostOne : sample;
}

} // namespace

const IRRate* findRate(std::int64_t sampleRate) {
    const auto row =
        std::find_if(rateTable.begin(), rateTable.end(),
                     [sampleRate](const IRRate& rate) { return rate.sampleRate == sampleRate; });
    return row == rateTable.end() ? nullptr : &*row;
}

std::int32_t scaleToInteger(float sample) {
    constexpr float limit = 2147483648.0f;
    const float scaled = fullScale * drawnIn(sample);
    if (scaled >= -limit && scaled < limit)
        return static_cast<std::int32_t>(scaled);
    return std::numeric_limits<std::int32_t>::min();
}

std::uint32_t ICovertoF(std::span<const std::uint32_t, irWorkCount> source, std::int32_t rate) {
    const IRRate* row = findRate(rate);
    if (!row || row->ratio == 0.0f)
        return 0;
    for (std::size_t i = 0; i < row->cap; ++i) {
        std::uint32_t sample = source[i] & sampleMask;
        if (sample & signBit)
            sample |= signExtension;
        EnterBufferF[i] = static_cast<float>(static_cast<std::int32_t>(sample)) / fullScale;
    }
    return row->cap;
}

std::uint32_t Resample(std::span<const float, irWorkCount> source, std::int32_t rate) {
    // The fraction is carried from point to point: its rounding drift is part of the result.
    const float advance = ratioOf(rate) - 1.0f;
    float fraction = 0.0f;
    std::size_t index = 1;
    ResampOut[0] = source[0];
    for (std::size_t k = 1; k < irPointCount; ++k) {
        fraction += advance;
        while (fraction >= 1.0f) {
            fraction -= 1.0f;
            ++index;
        }
        ResampOut[k] = source[index] + (source[index + 1] - source[index]) * fraction;
        ++index;
    }
    return irPointCount;
}

void FCovertoI(std::span<float, irPointCount> source,
               std::span<std::uint32_t, irPointCount> destination) {
    for (std::size_t i = 0; i < irPointCount; ++i) {
        source[i] = drawnIn(source[i]);
        const std::int32_t value = scaleToInteger(source[i]);
        destination[i] = static_cast<std::uint32_t>(value) & sampleMask;
        if (value < 0)
            destination[i] |= signBit;
    }
}

} // namespace cabslot
