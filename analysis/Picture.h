// A picture as plain data: shapes in logical pixels, with y downwards. The window and the SVG
// writer draw the same pictures, each with its own colours.
#pragma once

#include <string>
#include <variant>
#include <vector>

namespace cabslot {

/// The role of a shape; the front end chooses its colour.
enum class Ink {
    grid,   ///< thin lines behind the curve
    frame,  ///< around the curve, and the zero line
    faint,  ///< less important text
    text,   ///< text
    before, ///< the curve that `signal` is compared with
    other,  ///< a second curve beside `signal`, dashed: colour-blind eyes can tell them apart
    third,  ///< a third one, dotted
    signal, ///< the curve
};

struct Spot {
    double x = 0;
    double y = 0;
};

/// A straight line one unit wide.
struct Line {
    Spot from;
    Spot to;
    Ink ink;
};

/// A filled polygon with an outline of the same ink, so that it is visible where it has no width.
struct Area {
    std::vector<Spot> corners;
    double outline;
    Ink ink;
};

enum class LineStyle { solid, dashed, dotted };

/// A line through two or more spots.
struct Stroke {
    std::vector<Spot> spots;
    double width;
    LineStyle style;
    Ink ink;
};

enum class Align { left, centre, right };

/// One line of text; `at` is on its baseline.
struct Text {
    Spot at;
    std::string text; ///< UTF-8
    double size;      ///< of the font, in logical pixels
    Align align;
    Ink ink;
    bool strong = false;
};

using Shape = std::variant<Line, Area, Stroke, Text>;

struct Picture {
    double width = 0;
    double height = 0;
    std::vector<Shape> shapes; ///< the first is drawn first
};

} // namespace cabslot
