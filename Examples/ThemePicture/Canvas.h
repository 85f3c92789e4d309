#pragma once

#include "CorbelKit/Formats/Themes.h"

#include <pango/pangocairo.h>

#include <memory>
#include <string>
#include <vector>

namespace ThemePicture {

struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }

    void operator()(cairo_t* context) const { cairo_destroy(context); }

    void operator()(PangoLayout* layout) const { g_object_unref(layout); }

    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }

    void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
};

template <class T>
using Handle = std::unique_ptr<T, Release>;

using Color = CorbelKit::Theme::Color;

/// Lengths in points, drawn at two pixels each; y grows downwards.
struct Rectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

struct Extent {
    double width = 0;
    double height = 0;
};

/// Text in one colour.
struct Run {
    Color color;
    std::string text;
};

using Line = std::vector<Run>;

/// An image to draw on.
class Canvas {
public:
    Canvas(double width, double height);

    void fill(const Rectangle& area, const Color& color);

    /// Draws what follows within the rounded rectangle alone, until `endClip`.
    void beginClip(const Rectangle& area, double radius);
    void endClip();

    Extent extent(const Line& line, const Platform::Font& font) const;
    void draw(const Line& line, const Platform::Font& font, double x, double baseline);

    /// False when it cannot be written.
    bool writePNG(const std::string& path) const;

private:
    Handle<PangoLayout> layoutOf(const Line& line, const Platform::Font& font) const;

    Handle<cairo_surface_t> surface_;
    Handle<cairo_t> context_;
};

} // namespace ThemePicture
