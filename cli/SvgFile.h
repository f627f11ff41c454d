// Writes pictures as SVG files, on a light background.
#pragma once

#include "analysis/Picture.h"

#include <string>

namespace cabslot {

/// What is wrong with the name of a plot's file: it must end with .svg, in any case. Empty if it
/// does.
std::string whyNoSvgPath(const std::string& path);

/// The complete file, in UTF-8. One unit of the picture is one pixel.
std::string svgFile(const Picture& picture);

} // namespace cabslot
