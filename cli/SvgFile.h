// Writes pictures as SVG files, on a light background.
#pragma once

#include "analysis/Picture.h"

#include <string>

namespace cabslot {

/// Whether the path ends with .svg, in any case.
bool isSvgPath(const std::string& path);

/// The complete file, in UTF-8. One unit of the picture is one pixel.
std::string svgFile(const Picture& picture);

} // namespace cabslot
