// How an IR is laid out as a picture. The size of the text decides how much space it gets.
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

// In text sizes: smaller, and labels run into one another.
inline constexpr double narrowestPlot = 32;
inline constexpr double lowestPlot = 14;

/// The waveform alone, as high as the picture: of the shape, not of the level. Only what is below
/// -60 dBFS is drawn lower.
Picture thumbnail(const Samples& samples, double width, double height);

/// Full scale 1.0 over milliseconds; of the vertical axis as much as the IR needs.
Picture wavePlot(const Samples& samples, const PlotSize& size);

/// dB over Hz, the upper 60 dB of it.
Picture responsePlot(const Samples& samples, const Response& response, const PlotSize& size);

/// The responses of two IRs over each other, the upper 60 dB of the higher one; `before` lies
/// behind.
Picture comparisonPlot(const Samples& before, const Samples& after, const PlotSize& size);

/// A page of its own: name, levels, both plots, the findings.
Picture summaryPage(const IRSummary& summary);

/// A page of its own: what was done to an IR, its waveform, and its response over that of `before`.
Picture comparisonPage(const std::string& name, const std::vector<std::string>& steps,
                       const Samples& before, const Samples& after);

} // namespace cabslot
