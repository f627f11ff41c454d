// Mixes IRs into one, which the pedal can hold like any other: convolution is linear. The first
// stays where it is; each of the others is aligned to it.
//
// No point of an onset is lost: if a shift would move one before the block, all are delayed by the
// same whole number of points, which changes nothing else. Any thread.
#pragma once

#include "blend/Align.h"
#include "blend/Shift.h"
#include "irfile/IR.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cabslot {

enum class Polarity {
    found,  ///< turned if it is opposite to the first and they are aligned
    asItIs, ///< by hand
    turned, ///< by hand
};

/// What is done to one IR before the sum.
struct Fit {
    std::optional<Alignment> alignment{}; ///< none: the first, or nothing is to be aligned
    double shift = 0;                     ///< points, later; below 0 earlier
    bool isTurned = false;
    double lost = 0; ///< share of its energy, 0 to 1, that is shifted out of the block
};

/// "shifted 0.41 ms earlier, polarity turned"; that nothing clear was found; empty if nothing was
/// looked for and the polarity is as it was.
std::string fitText(const Fit& fit);

struct Mixed {
    Block block{};
    double gain = 0; ///< dB, below 0 if the sum would have clipped and was scaled
};

/// Construction aligns, which takes some milliseconds for each IR; mix() takes microseconds.
class Blend {
public:
    /// `polarities`, one for each IR, may be shorter: the rest are `found`.
    Blend(std::span<const Block> irs, bool aligns, std::span<const Polarity> polarities = {});

    const std::vector<Fit>& fits() const { return fits_; } ///< one for each IR
    std::size_t delay() const { return delay_; }           ///< points, of all

    /// The weighted sum. `weights`, one for each IR, none below 0 and not all 0, are relative. If
    /// all but one are 0, the result is that IR itself, bit for bit: neither shifted nor turned.
    Mixed mix(std::span<const double> weights) const;

private:
    std::vector<Block> blocks_;
    std::vector<ShiftedIR> shifted_; ///< with their polarity
    std::vector<Fit> fits_;
    std::size_t delay_ = 0;
};

} // namespace cabslot
