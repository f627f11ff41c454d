// Lays an IR out as a picture. The text size decides how much space it gets.
#pragma once

#include "analysis/IRSummary.h"
#include "analysis/Picture.h"
#include "analysis/Response.h"

namespace cabslot {

struct PlotSize {
    double width;
    double height;
    double text; ///< size of the labels' font
};

// In text sizes; if narrower, labels would overlap.
inline constexpr double narrowestPlot = 32;
inline constexpr double lowestPlot = 14;

/// The waveform alone, scaled to the picture's height, so that it shows the shape, not the level.
/// Only waveforms below -60 dBFS are drawn lower.
Picture thumbnail(const Samples& samples, double width, double height);

/// Amplitude (full scale 1.0) over milliseconds; the vertical axis is scaled to the peak.
Picture wavePlot(const Samples& samples, const PlotSize& size);

/// dB over Hz, the top 60 dB.
Picture responsePlot(const Samples& samples, const Response& response, const PlotSize& size);

/// The responses of two IRs in one plot, the top 60 dB of the higher one, with `before` behind.
Picture comparisonPlot(const Samples& before, const Samples& after, const PlotSize& size);

/// A full page: name, levels, both plots, the findings.
Picture summaryPage(const IRSummary& summary);

/// A full page: what was done to an IR, its waveform, and its response over that of `before`.
Picture comparisonPage(const std::string& name, const std::vector<std::string>& steps,
                       const Samples& before, const Samples& after);

} // namespace cabslot
