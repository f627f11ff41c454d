// A picture as plain data: what is drawn where, in the units of a screen at 100 %, y downwards. The
// window and the files draw the same pictures, each with its own few lines of code and its own
// colours.
#pragma once

#include <string>
#include <variant>
#include <vector>

namespace cabslot {

/// What something is, not what colour it has.
enum class Ink {
    grid,   ///< fine lines behind the curve
    frame,  ///< around the curve, and the zero line
    faint,  ///< text of less weight
    text,   ///< text
    before, ///< a curve that another one is compared with
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

/// A filled polygon with an outline of the same ink, so that it is seen where it has no width.
struct Area {
    std::vector<Spot> corners;
    double outline;
    Ink ink;
};

enum class Align { left, centre, right };

/// One line of text; `at` is on its base line.
struct Text {
    Spot at;
    std::string text; ///< UTF-8
    double size;      ///< of the font, in units
    Align align;
    Ink ink;
    bool strong = false;
};

using Shape = std::variant<Line, Area, Text>;

struct Picture {
    double width = 0;
    double height = 0;
    std::vector<Shape> shapes; ///< the first lies at the bottom
};

} // namespace cabslot
