#include "irfile/IRConversion.h"

#include "irfile/FloatSample.h"
#include "irfile/SampleFormat.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <iterator>
#include <limits>

namespace cabslot {

static_assert(FLT_EVAL_METHOD == 0, "single precision has to be computed in single precision");
static_assert(std::numeric_limits<float>::is_iec559);

// The loops below fill a local array and copy it: for all the compiler knows, these could overlap
// the source, and it would read and write point by point.
constinit thread_local std::array<float, irWorkCount> EnterBufferF{};
constinit thread_local std::array<float, irPointCount> ResampOut{};

namespace {

// The ratios are rounded to three decimals, and the caps lie a few points above the last point that
// 1024 output points need (1114, 2047 and 2228). Both are kept, so that an IR sounds the same in
// every version.
constexpr IRRate rateTable[] = {
    {44100, 1024, 0.0f},
    {48000, 1120, std::bit_cast<float>(0x3F8B4396u)}, // 1.088
    {88200, 2050, 2.0f},
    {96000, 2240, std::bit_cast<float>(0x400B53F8u)}, // 2.177
};
constexpr std::size_t rateCount = std::size(rateTable);

/// The position of an output point: `fraction` of the way from input point `index` to the next.
struct Position {
    std::uint32_t index;
    float fraction;
};
using Positions = std::array<Position, irPointCount>;

/// The positions depend only on the ratio. A rate that is not resampled has the ratio 0.
constexpr Positions positionsAt(float ratio) {
    Positions positions{};
    float fraction = 0.0f;
    std::uint32_t index = 1;
    for (std::size_t k = 1; k < irPointCount; ++k, ++index) {
        fraction += ratio - 1.0f;
        while (fraction >= 1.0f) {
            fraction -= 1.0f;
            ++index;
        }
        positions[k] = {index, fraction};
    }
    return positions;
}

/// One row per row of rateTable.
constexpr std::array<Positions, rateCount> positionTable = [] {
    std::array<Positions, rateCount> table;
    std::ranges::transform(rateTable, table.begin(),
                           [](const IRRate& rate) { return positionsAt(rate.ratio); });
    return table;
}();

/// Whether the decoded points reach to the last position, and the work buffers hold them.
constexpr bool fits(std::size_t row) {
    const IRRate& rate = rateTable[row];
    return rate.cap <= irWorkCount &&
           (rate.ratio == 0.0f || positionTable[row].back().index + 1 < rate.cap);
}
static_assert([] {
    for (std::size_t row = 0; row < rateCount; ++row)
        if (!fits(row))
            return false;
    return true;
}());

} // namespace

const IRRate* findRate(std::int64_t sampleRate) {
    const auto row = std::ranges::find(rateTable, sampleRate, &IRRate::sampleRate);
    return row == std::end(rateTable) ? nullptr : row;
}

std::size_t pointsRead(const IRRate& rate) {
    return positionTable[static_cast<std::size_t>(&rate - rateTable)].back().index + 2;
}

std::string supportedRates() {
    std::string text;
    for (const IRRate& rate : rateTable) {
        const bool last = &rate == std::end(rateTable) - 1;
        text += (text.empty() ? "" : last ? " and " : ", ") + std::to_string(rate.sampleRate);
    }
    return text + " Hz";
}

std::uint32_t ICovertoF(std::span<const std::uint32_t, irWorkCount> source, std::int32_t rate) {
    const IRRate* row = findRate(rate);
    if (!row || row->ratio == 0.0f)
        return 0;
    std::array<float, irWorkCount> points;
    std::ranges::transform(source.first(row->cap), points.begin(), [](std::uint32_t sample) {
        return static_cast<float>(signedSample(sample)) / fullScale;
    });
    std::copy_n(points.begin(), row->cap, EnterBufferF.begin());
    return row->cap;
}

std::uint32_t Resample(std::span<const float, irWorkCount> source, std::int32_t rate) {
    const IRRate* row = findRate(rate);
    const Positions& positions = positionTable[row ? static_cast<std::size_t>(row - rateTable) : 0];
    std::array<float, irPointCount> points;
    for (std::size_t k = 0; k < irPointCount; ++k) {
        const float* const point = source.data() + positions[k].index;
        points[k] = point[0] + (point[1] - point[0]) * positions[k].fraction;
    }
    ResampOut = points;
    return irPointCount;
}

void FCovertoI(std::span<float, irPointCount> source,
               std::span<std::uint32_t, irPointCount> destination) {
    for (std::size_t i = 0; i < irPointCount; ++i) {
        source[i] = belowFullScale(source[i]);
        const std::int32_t value = scaleToInteger(source[i]);
        destination[i] =
            (static_cast<std::uint32_t>(value) & sampleMask) | (value < 0 ? signBit : 0);
    }
}

} // namespace cabslot
