// A block as numbers, full scale 1.0: what the pedal will play, its envelope, its level.
#pragma once

#include "irfile/IR.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace cabslot {

inline constexpr double pointsPerSecond = 44100;
inline constexpr double blockMilliseconds = irPointCount * 1000 / pointsPerSecond;

using Samples = std::array<double, irPointCount>; ///< -1.0 to just below 1.0

/// The points that the pedal receives: the low 24 bits of each entry, two's complement.
Samples samplesOf(const Block& block);

/// The lowest and the highest of some values.
struct Range {
    double lowest;
    double highest;
};

/// The range of `curve` (not empty), linearly interpolated, between two positions in values, which
/// may be fractional. Positions outside the curve are ignored.
Range rangeOver(std::span<const double> curve, double from, double to);

/// The range of each of `columns` (at least 1) equal parts, from the first point to the last. The
/// parts touch, so that at any width no point is missed and the curve has no gaps.
std::vector<Range> envelope(const Samples& samples, std::size_t columns);

/// 20 times the base-10 logarithm; `quietest` for 0.
double decibels(double amplitude);
inline constexpr double quietest = -200; // dB; below what 24 bits can hold

/// 10 times the base-10 logarithm; `quietest` for 0.
double powerDecibels(double power);

double peakOf(std::span<const double> samples);   ///< the greatest magnitude
double energyOf(std::span<const double> samples); ///< the sum of all squares

/// The index of the onset: the first sample within 40 dB of the peak; 0 if all are 0.
std::size_t onsetOf(std::span<const double> samples);

/// Relative to full scale, so that a full-scale square is at 0 dBFS; no value if silent.
std::optional<double> peakDbfs(const Samples& samples);
std::optional<double> rmsDbfs(const Samples& samples); ///< over the whole block

} // namespace cabslot
