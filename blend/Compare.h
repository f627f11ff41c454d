// How two IRs differ: in level, in the response by octaves, and in what is left when one is
// subtracted from the other. Any thread; takes some milliseconds.
#pragma once

#include "blend/Align.h"

#include <array>
#include <optional>
#include <string>

namespace cabslot {

/// The nominal centres of the octaves, Hz; the highest one ends at 22.05 kHz.
inline constexpr std::array<double, 10> octaves = {31.5, 63,   125,  250,  500,
                                                   1000, 2000, 4000, 8000, 16000};

/// Below this residue, dB, two IRs are said to null.
inline constexpr double nullResidue = -60;

struct Comparison {
    Alignment alignment; ///< the second to the first
    double level = 0;    ///< dB: the energy of the second relative to the first
    std::array<double, octaves.size()> differences{}; ///< dB for each octave: second less first

    /// dB: the energy of their difference relative to the first, after the second was shifted,
    /// turned and scaled to match; `quietest` if nothing is left.
    double residue = 0;
};

/// No value if one of them is silent.
std::optional<Comparison> compare(const Samples& first, const Samples& second);

/// "they null: -82.1 dB are left", "identical but for level ..." in one clause.
std::string residueText(double residue);

} // namespace cabslot
