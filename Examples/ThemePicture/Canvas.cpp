#include "ThemePicture/Canvas.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangofc-fontmap.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ThemePicture {
namespace {

constexpr double pixelsPerPoint = 2;

struct PatternDestroy {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};

using Pattern = std::unique_ptr<FcPattern, PatternDestroy>;

// Pango knows families and styles, but no PostScript names.
Handle<PangoFontDescription> descriptionOf(const Platform::Font& font) {
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_POSTSCRIPT_NAME,
                       reinterpret_cast<const FcChar8*>(font.postScriptName.c_str()));
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    Handle<PangoFontDescription> description(
        found ? pango_fc_font_description_from_pattern(found.get(), FALSE)
              : pango_font_description_new());
    pango_font_description_set_absolute_size(description.get(), font.pointSize * PANGO_SCALE);
    return description;
}

guint16 level(double component) {
    constexpr double most = 65535;
    return static_cast<guint16>(std::lround(std::clamp(component, 0.0, 1.0) * most));
}

} // namespace

Canvas::Canvas(double width, double height)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                          static_cast<int>(std::ceil(width * pixelsPerPoint)),
                                          static_cast<int>(std::ceil(height * pixelsPerPoint))))
    , context_(cairo_create(surface_.get())) {
    cairo_scale(context_.get(), pixelsPerPoint, pixelsPerPoint);
}

void Canvas::fill(const Rectangle& area, const Color& color) {
    cairo_set_source_rgba(context_.get(), color.red, color.green, color.blue, color.alpha);
    cairo_rectangle(context_.get(), area.x, area.y, area.width, area.height);
    cairo_fill(context_.get());
}

void Canvas::beginClip(const Rectangle& area, double radius) {
    constexpr double quarter = std::numbers::pi / 2;
    const double left = area.x + radius;
    const double top = area.y + radius;
    const double right = area.x + area.width - radius;
    const double bottom = area.y + area.height - radius;
    cairo_save(context_.get());
    cairo_new_path(context_.get());
    cairo_arc(context_.get(), right, top, radius, -quarter, 0);
    cairo_arc(context_.get(), right, bottom, radius, 0, quarter);
    cairo_arc(context_.get(), left, bottom, radius, quarter, 2 * quarter);
    cairo_arc(context_.get(), left, top, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(context_.get());
    cairo_clip(context_.get());
}

void Canvas::endClip() {
    cairo_restore(context_.get());
}

Handle<PangoLayout> Canvas::layoutOf(const Line& line, const Platform::Font& font) const {
    Handle<PangoLayout> layout(pango_cairo_create_layout(context_.get()));
    const Handle<PangoAttrList> colors(pango_attr_list_new());
    std::string text;
    for (const auto& run : line) {
        auto* const color = pango_attr_foreground_new(level(run.color.red), level(run.color.green),
                                                      level(run.color.blue));
        color->start_index = static_cast<guint>(text.size());
        text += run.text;
        color->end_index = static_cast<guint>(text.size());
        pango_attr_list_insert(colors.get(), color);
    }
    pango_layout_set_text(layout.get(), text.c_str(), static_cast<int>(text.size()));
    pango_layout_set_attributes(layout.get(), colors.get());
    pango_layout_set_font_description(layout.get(), descriptionOf(font).get());
    return layout;
}

Extent Canvas::extent(const Line& line, const Platform::Font& font) const {
    PangoRectangle logical{};
    pango_layout_get_extents(layoutOf(line, font).get(), nullptr, &logical);
    return {.width = static_cast<double>(logical.width) / PANGO_SCALE,
            .height = static_cast<double>(logical.height) / PANGO_SCALE};
}

void Canvas::draw(const Line& line, const Platform::Font& font, double x, double baseline) {
    const auto layout = layoutOf(line, font);
    const double ascent =
        static_cast<double>(pango_layout_get_baseline(layout.get())) / PANGO_SCALE;
    cairo_move_to(context_.get(), x, baseline - ascent);
    pango_cairo_show_layout(context_.get(), layout.get());
}

bool Canvas::writePNG(const std::string& path) const {
    return cairo_surface_write_to_png(surface_.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

} // namespace ThemePicture
