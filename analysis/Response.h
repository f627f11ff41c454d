// The frequency response of a block: what playing through it does to each frequency, in dB. A block
// with a single point of full scale is at 0 dB everywhere.
#pragma once

#include "analysis/Samples.h"

namespace cabslot {

inline constexpr double lowestShownHz = 20;
inline constexpr double highestShownHz = 20000;

class Response {
public:
    /// Transforms the block, filled up with zeros to a bin every 1.35 Hz, so that the curve is
    /// smooth at the low end. Nothing else is smoothed: no window, no averaging. Takes some
    /// milliseconds; make it when it is to be seen.
    explicit Response(const Samples& samples);

    /// The range between two frequencies (Hz, 0 to 22050): whatever peak or notch lies between them
    /// is in it. `quietest` stands for nothing at all.
    Range over(double fromHz, double toHz) const;

    /// `columns` (at least 1) parts of a logarithmic axis from 20 Hz to 20 kHz, that touch.
    std::vector<Range> columns(std::size_t columns) const;

    struct Peak {
        double hertz;
        double decibels;
    };
    Peak peak() const; ///< the highest place of what is shown

private:
    std::vector<double> decibels_; ///< a value a bin, 0 Hz to 22050 Hz
};

/// The frequency at a place of the logarithmic axis, 0 for 20 Hz to 1 for 20 kHz, and back.
double hertzAt(double place);
double placeOf(double hertz);

} // namespace cabslot
