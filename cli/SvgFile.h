// Pictures as SVG files, on a light ground.
#pragma once

#include "analysis/Picture.h"

#include <string>

namespace cabslot {

/// The path ends as an SVG file's name does, .svg in any case.
bool isSvgPath(const std::string& path);

/// The whole file, in UTF-8. One unit of the picture is one pixel.
std::string svgFile(const Picture& picture);

} // namespace cabslot
