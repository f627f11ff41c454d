// Pictures as files, drawn by cairo on a light ground.
#pragma once

#include "analysis/Picture.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

enum class PlotFormat { svg, png };

/// The format that the path's ending asks for, .svg or .png in any case; nothing for another.
std::optional<PlotFormat> plotFormatOf(const std::string& path);

/// The file's bytes. A PNG has two pixels a unit. Empty when cairo fails, which it does when there
/// is no memory.
std::vector<std::uint8_t> plotFile(const Picture& picture, PlotFormat format);

} // namespace cabslot
