// The frequency response of a block in dB: the gain at each frequency. A single point of full scale
// is 0 dB everywhere.
#pragma once

#include "analysis/Samples.h"

namespace cabslot {

inline constexpr double lowestShownHz = 20;
inline constexpr double highestShownHz = 20000;

class Response {
public:
    /// Transforms the block, zero-padded to one bin per 1.35 Hz, so that the curve is smooth at low
    /// frequencies. No window, no averaging. Takes a few milliseconds; construct it only when it is
    /// needed.
    explicit Response(const Samples& samples);

    /// The range between two frequencies (Hz, 0 to 22050), including any peak or notch between.
    /// Silence gives `quietest`.
    Range over(double fromHz, double toHz) const;

    /// Splits a logarithmic axis from 20 Hz to 20 kHz into `columns` (at least 1) adjacent parts.
    std::vector<Range> columns(std::size_t columns) const;

    /// The mean of the power between two frequencies (Hz, 0 to 22050), in dB.
    double mean(double fromHz, double toHz) const;

    struct Peak {
        double hertz;
        double decibels;
    };
    Peak peak() const; ///< the highest point of the range shown

private:
    std::vector<double> decibels_; ///< one value per bin, 0 Hz to 22050 Hz
};

/// The frequency at a position on the logarithmic axis (0: 20 Hz, 1: 20 kHz), and the inverse.
double hertzAt(double place);
double placeOf(double hertz);

} // namespace cabslot
