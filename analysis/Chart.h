// What all plots have: a frame with a grid, labels and a legend; and curves as areas and lines.
#pragma once

#include "analysis/Plots.h"

#include <functional>
#include <span>
#include <string>

namespace cabslot {

inline constexpr double strokeWidth = 1.6; ///< of dashed and dotted curves

/// Moves a thin line to whole pixels, where it looks sharp.
double crisp(double place);

/// The rectangle that a curve is drawn in, and the scale of its vertical axis.
class Chart {
public:
    Chart(Picture& picture, const PlotSize& size, Range values);

    double width() const { return right_ - left_; }
    double x(double place) const { return left_ + place * width(); } ///< 0: left, 1: right
    double y(double value) const;                                    ///< within the axis

    void caption(const std::string& text, const std::string& unit);
    void across(double value, const std::string& label); ///< a line of the grid
    void upright(double place, const std::string& label);
    void unitBelow(const std::string& unit);
    void note(const std::string& text); ///< in the middle
    void frame();

    /// Names of curves, to the right of a caption of `after` characters; each is cut to its share
    /// of the line.
    void legend(std::span<const Curve> curves, std::size_t after);

private:
    void write(Spot at, const std::string& text, Align align, Ink ink);

    Picture& picture_;
    double text_;
    Range values_;
    double left_, right_, top_, bottom_;
};

/// One column for each whole unit of `width`, at least one.
std::size_t columnsOf(double width);

/// The area between the lowest and the highest values of adjacent columns.
Area areaOf(std::span<const Range> ranges, const std::function<double(double)>& xOfColumn,
            const std::function<double(double)>& y, Ink ink = Ink::signal);

} // namespace cabslot
