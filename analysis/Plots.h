// Lays an IR out as a picture. The text size decides how much space it gets.
#pragma once

#include "analysis/IRSummary.h"
#include "analysis/Picture.h"
#include "analysis/Response.h"

#include <span>
#include <string>
#include <vector>

namespace cabslot {

struct PlotSize {
    double width;
    double height;
    double text; ///< size of the labels' font
};

// In text sizes; if narrower, labels would overlap.
inline constexpr double narrowestPlot = 28;
inline constexpr double lowestPlot = 10;

/// The waveform alone, scaled to the picture's height, so that it shows the shape, not the level.
/// Only waveforms below -60 dBFS are drawn lower.
Picture thumbnail(const Samples& samples, double width, double height);

/// Amplitude (full scale 1.0) over milliseconds; the vertical axis is scaled to the peak.
Picture wavePlot(const Samples& samples, const PlotSize& size);

/// dB over Hz, the top 60 dB.
Picture responsePlot(const Samples& samples, const Response& response, const PlotSize& size);

/// One of several curves in a plot of responses.
struct Curve {
    const Response* response = nullptr; ///< not null
    std::string name{};                 ///< for the legend
    Ink ink = Ink::signal;
    LineStyle style = LineStyle::solid;
};

/// Several responses, the first drawn first, with a legend if they are more than one: the top 60 dB
/// of the highest of them.
Picture responsesPlot(const std::string& caption, std::span<const Curve> curves,
                      const PlotSize& size);

/// The responses of two IRs in one plot, the top 60 dB of the higher one, with `before` behind.
Picture comparisonPlot(const Samples& before, const Samples& after, const PlotSize& size);

/// A full page: name, levels, both plots, the findings.
Picture summaryPage(const IRSummary& summary);

/// A full page: what was done to an IR, its waveform, and its response over that of `before`.
Picture comparisonPage(const std::string& name, const std::vector<std::string>& steps,
                       const Samples& before, const Samples& after);

/// A full page: `title`, the waveform of `wave` unless it is null, the responses, and `lines`.
Picture responsesPage(const std::string& title, const std::vector<std::string>& lines,
                      const Samples* wave, std::span<const Curve> curves);

} // namespace cabslot
