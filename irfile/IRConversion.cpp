#include "irfile/IRConversion.h"

#include "irfile/FloatSample.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cstring>
#include <limits>

namespace cabslot {

static_assert(FLT_EVAL_METHOD == 0, "single precision has to be computed in single precision");
static_assert(std::numeric_limits<float>::is_iec559);

std::array<float, irWorkCount> EnterBufferF{};
std::array<float, irPointCount> ResampOut{};

namespace {

constexpr std::uint32_t sampleMask = 0xFFFFFF;
constexpr std::uint32_t signBit = 0x800000;
constexpr int bitsAbove = 8; // of a 32-bit word, above a sample

// The ratios are the true ones rounded to three decimals, and the caps lie a few points above the
// last point that 1024 output points read (1114, 2047 and 2228): both on purpose.
constexpr std::array<IRRate, 4> rateTable = {{
    {44100, 1024, 0.0f},
    {48000, 1120, std::bit_cast<float>(0x3F8B4396u)}, // 1.088
    {88200, 2050, 2.0f},
    {96000, 2240, std::bit_cast<float>(0x400B53F8u)}, // 2.177
}};

/// What an output point lies between: input points `index` and `index` + 1.
struct Positions {
    std::array<std::uint16_t, irPointCount> index;
    std::array<float, irPointCount> fraction;
};

// The positions depend on the ratio alone. The fraction is carried from point to point: its
// rounding drift is part of the result.
constexpr Positions positionsAt(float ratio) {
    Positions positions{};
    const float advance = ratio - 1.0f;
    float fraction = 0.0f;
    std::uint32_t index = 1;
    for (std::size_t k = 1; k < irPointCount; ++k, ++index) {
        fraction += advance;
        while (fraction >= 1.0f) {
            fraction -= 1.0f;
            ++index;
        }
        positions.index[k] = static_cast<std::uint16_t>(index);
        positions.fraction[k] = fraction;
    }
    return positions;
}

/// Row by row those of rateTable.
constexpr std::array<Positions, rateTable.size()> positionTable = {
    positionsAt(rateTable[0].ratio), positionsAt(rateTable[1].ratio),
    positionsAt(rateTable[2].ratio), positionsAt(rateTable[3].ratio)};

/// A rate that is not there has no ratio, like the first row.
const Positions& positionsOf(std::int32_t rate) {
    const IRRate* row = findRate(rate);
    return positionTable[row ? static_cast<std::size_t>(row - rateTable.data()) : 0];
}

constexpr std::size_t groupSize = 4; // points that the compiler does at once

/// A point, in the low half, and the next one. One load for two points: loads are what resampling
/// waits for.
std::uint64_t neighbours(const float* point) {
    std::uint64_t both = 0;
    std::memcpy(&both, point, sizeof both);
    return std::endian::native == std::endian::little ? both : std::rotl(both, 32);
}

} // namespace

const IRRate* findRate(std::int64_t sampleRate) {
    const auto row =
        std::find_if(rateTable.begin(), rateTable.end(),
                     [sampleRate](const IRRate& rate) { return rate.sampleRate == sampleRate; });
    return row == rateTable.end() ? nullptr : &*row;
}

std::uint32_t ICovertoF(std::span<const std::uint32_t, irWorkCount> source, std::int32_t rate) {
    const IRRate* row = findRate(rate);
    if (!row || row->ratio == 0.0f)
        return 0;
    for (std::size_t i = 0; i < row->cap; ++i) {
        const auto sample = static_cast<std::int32_t>(source[i] << bitsAbove); // its sign on top
        EnterBufferF[i] = static_cast<float>(sample) / (fullScale * (1 << bitsAbove));
    }
    return row->cap;
}

std::uint32_t Resample(std::span<const float, irWorkCount> source, std::int32_t rate) {
    const Positions& positions = positionsOf(rate);
    for (std::size_t k = 0; k < irPointCount; k += groupSize) {
        std::array<float, groupSize> before;
        std::array<float, groupSize> behind;
        for (std::size_t i = 0; i < groupSize; ++i) {
            const std::uint64_t both = neighbours(source.data() + positions.index[k + i]);
            before[i] = std::bit_cast<float>(static_cast<std::uint32_t>(both));
            behind[i] = std::bit_cast<float>(static_cast<std::uint32_t>(both >> 32));
        }
        for (std::size_t i = 0; i < groupSize; ++i)
            ResampOut[k + i] = before[i] + (behind[i] - before[i]) * positions.fraction[k + i];
    }
    ResampOut[0] = source[0];
    return irPointCount;
}

void FCovertoI(std::span<float, irPointCount> source,
               std::span<std::uint32_t, irPointCount> destination) {
    std::uint32_t marks = floatSign;
    for (const float sample : source)
        marks &= insideMark(std::bit_cast<std::uint32_t>(sample));
    if (marks != 0) {
        std::ranges::transform(source, destination.begin(), insidePoint);
        return;
    }
    for (std::size_t i = 0; i < irPointCount; ++i) {
        source[i] = drawnIn(source[i]);
        const std::int32_t value = scaleToInteger(source[i]);
        const std::uint32_t sign = value < 0 ? signBit : 0;
        destination[i] = (static_cast<std::uint32_t>(value) & sampleMask) | sign;
    }
}

} // namespace cabslot
