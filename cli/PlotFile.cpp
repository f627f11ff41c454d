#include "cli/PlotFile.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>

namespace cabslot {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

constexpr double pngScale = 2; // sharp on today's screens

struct Colour {
    double red, green, blue;
};

constexpr Colour paper = {1, 1, 1};

Colour colourOf(Ink ink) {
    switch (ink) {
    case Ink::grid:
        return {0.90, 0.90, 0.90};
    case Ink::frame:
        return {0.72, 0.72, 0.72};
    case Ink::faint:
        return {0.35, 0.35, 0.35};
    case Ink::text:
        return {0.07, 0.07, 0.07};
    case Ink::signal:
        break;
    }
    return {0.10, 0.42, 0.66};
}

void take(cairo_t* cairo, const Colour& colour) {
    cairo_set_source_rgb(cairo, colour.red, colour.green, colour.blue);
}

void draw(cairo_t* cairo, const Line& line) {
    take(cairo, colourOf(line.ink));
    cairo_set_line_width(cairo, 1);
    cairo_move_to(cairo, line.from.x, line.from.y);
    cairo_line_to(cairo, line.to.x, line.to.y);
    cairo_stroke(cairo);
}

void draw(cairo_t* cairo, const Area& area) {
    take(cairo, colourOf(area.ink));
    cairo_set_line_width(cairo, area.outline);
    for (const Spot& corner : area.corners)
        cairo_line_to(cairo, corner.x, corner.y);
    cairo_close_path(cairo);
    cairo_fill_preserve(cairo);
    cairo_stroke(cairo);
}

void draw(cairo_t* cairo, const Text& text) {
    take(cairo, colourOf(text.ink));
    cairo_select_font_face(cairo, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           text.strong ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, text.size);
    cairo_text_extents_t extents{};
    cairo_text_extents(cairo, text.text.c_str(), &extents);
    const double before[] = {0, extents.x_advance / 2, extents.x_advance};
    cairo_move_to(cairo, text.at.x - before[static_cast<std::size_t>(text.align)], text.at.y);
    cairo_show_text(cairo, text.text.c_str());
}

/// Draws `picture`; whether that went well.
bool drawOn(cairo_surface_t* surface, const Picture& picture, double scale) {
    const Context cairo(cairo_create(surface), cairo_destroy);
    cairo_scale(cairo.get(), scale, scale);
    cairo_set_line_join(cairo.get(), CAIRO_LINE_JOIN_ROUND);
    take(cairo.get(), paper);
    cairo_paint(cairo.get());
    for (const Shape& shape : picture.shapes)
        std::visit([&](const auto& each) { draw(cairo.get(), each); }, shape);
    return cairo_status(cairo.get()) == CAIRO_STATUS_SUCCESS;
}

cairo_status_t append(void* closure, const unsigned char* data, unsigned int size) {
    auto& bytes = *static_cast<Bytes*>(closure);
    bytes.insert(bytes.end(), data, data + size);
    return CAIRO_STATUS_SUCCESS;
}

Bytes svgFile(const Picture& picture) {
    Bytes bytes;
    const Surface surface(
        cairo_svg_surface_create_for_stream(append, &bytes, picture.width, picture.height),
        cairo_surface_destroy);
    const bool drawn = drawOn(surface.get(), picture, 1);
    cairo_surface_finish(surface.get()); // now it is written
    return drawn ? bytes : Bytes{};
}

Bytes pngFile(const Picture& picture) {
    Bytes bytes;
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                                     static_cast<int>(picture.width * pngScale),
                                                     static_cast<int>(picture.height * pngScale)),
                          cairo_surface_destroy);
    const bool drawn =
        drawOn(surface.get(), picture, pngScale) &&
        cairo_surface_write_to_png_stream(surface.get(), append, &bytes) == CAIRO_STATUS_SUCCESS;
    return drawn ? bytes : Bytes{};
}

} // namespace

std::optional<PlotFormat> plotFormatOf(const std::string& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    if (ending == ".svg")
        return PlotFormat::svg;
    return ending == ".png" ? std::optional(PlotFormat::png) : std::nullopt;
}

std::vector<std::uint8_t> plotFile(const Picture& picture, PlotFormat format) {
    return format == PlotFormat::svg ? svgFile(picture) : pngFile(picture);
}

} // namespace cabslot
